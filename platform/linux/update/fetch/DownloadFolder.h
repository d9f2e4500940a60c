#pragma once

#include <QString>
#include <string>

namespace kelpa {

/// Where downloads lie: a folder of this user's alone, in the program's own. Neither is ever entered through
/// a link, which could lead to anything that this user has, and of what lies there only downloads are
/// touched.
class DownloadFolder {
  public:
    /// Makes the folder, and the one around it, where they are missing. `ending` is how the names of packages
    /// end.
    DownloadFolder(const QString& path, const QString& ending);
    ~DownloadFolder();
    DownloadFolder(const DownloadFolder&) = delete;
    DownloadFolder& operator=(const DownloadFolder&) = delete;

    /// What went wrong; empty while nothing did.
    [[nodiscard]] const std::string& error() const { return error_; }
    /// Removes what earlier downloads left.
    void empty();
    /// A descriptor, the caller's, of a new file that nothing opens by its name; -1 when there can be none.
    [[nodiscard]] int create();
    /// Where that file lies.
    [[nodiscard]] QString path() const;
    void discard();
    /// Gives it a name that a person understands and tells its path; empty when that does not work. What has
    /// the name already stays.
    QString keep(const QString& version);

  private:
    void enter(const QString& name);
    void complain(const QString& name);
    [[nodiscard]] bool isDownload(const char* name) const;

    QString path_;
    QString ending_;
    int folder_ = -1;
    std::string error_;
};

} // namespace kelpa
