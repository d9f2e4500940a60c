#include "platform/linux/update/Appcast.h"

#include <QStringDecoder>
#include <QXmlStreamReader>
#include <algorithm>

namespace kelpa {

namespace {

using namespace Qt::StringLiterals;

constexpr std::string_view digitsAndLetters = "0123456789abcdefghijklmnopqrstuvwxyz";
constexpr std::string_view digits = digitsAndLetters.substr(0, 10);
constexpr std::string_view letters = digitsAndLetters.substr(10);

/// A number or a word, in the order in which they make a version later. The end is a number as well: a zero.
struct Part {
    bool isNumber = true;
    std::size_t length = 0; ///< of a number, without the zeros in front
    std::string_view text;
    auto operator<=>(const Part&) const = default;
};

/// Takes a version apart.
class Parts {
  public:
    explicit Parts(const QString& version)
        : version_(version.section(u'+', 0, 0).toUtf8().toLower().toStdString()) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }
    Part next() {
        rest_.remove_prefix(std::min(rest_.find_first_of(digitsAndLetters), rest_.size()));
        if (const auto word = take(letters); !word.empty())
            return {false, 0, word};
        take("0");
        const auto number = take(digits);
        return {true, number.size(), number};
    }

  private:
    std::string_view take(std::string_view kind) {
        const auto taken = rest_.substr(0, rest_.find_first_not_of(kind));
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::string version_;
    std::string_view rest_ = version_;
};

/// Elements in an element of an item; the text of a release may bring some markup of its own.
constexpr int deepest = 32;
/// The parser compares every attribute of an element with every other one.
constexpr int mostAttributes = 400;
constexpr auto sparkle = "http://www.andymatuschak.org/xml-namespaces/sparkle"_L1;

/// Whether an element has far too many attributes. A tag ends before the next one begins, and no equals sign
/// is missing between an attribute's name and its value.
bool crowded(const QString& text) {
    int count = 0;
    return std::any_of(text.begin(), text.end(), [&count](QChar c) {
        count = c == u'<' ? 0 : count + (c == u'=' ? 1 : 0);
        return count > mostAttributes;
    });
}

/// Reads one feed from its beginning to its end.
class Parser {
  public:
    Parser(const QString& text, const QUrl& base) : xml_(text), base_(base) {}

    std::optional<std::vector<AppcastItem>> run() {
        if (!enter("rss"_L1) || !enter("channel"_L1))
            return std::nullopt;
        while (nextChild()) {
            if (xml_.name() == "item"_L1)
                item();
            else
                skip();
        }
        // What stands behind the channel has to be well-formed as well.
        while (!xml_.atEnd())
            next();
        if (xml_.hasError())
            return std::nullopt;
        return std::move(items_);
    }

  private:
    QXmlStreamReader::TokenType next() {
        const auto token = xml_.readNext();
        if (token == QXmlStreamReader::DTD)
            xml_.raiseError();
        return token;
    }

    /// Goes on to the next element in the current one; false at its end.
    bool nextChild() {
        while (!xml_.atEnd() && next() != QXmlStreamReader::EndElement)
            if (xml_.isStartElement())
                return true;
        return false;
    }

    bool enter(QLatin1String name) {
        while (nextChild()) {
            if (xml_.name() == name)
                return true;
            skip();
        }
        return false;
    }

    /// To the end of the current element; gives the text in it, without that of further elements.
    QString skip() {
        QString text;
        for (int depth = 1; depth > 0 && !xml_.atEnd();) {
            const auto token = next();
            if (token == QXmlStreamReader::EndElement)
                --depth;
            else if (token == QXmlStreamReader::Characters && depth == 1)
                text += xml_.text();
            else if (token == QXmlStreamReader::StartElement && ++depth > deepest)
                xml_.raiseError();
        }
        return text.trimmed();
    }

    void item() {
        AppcastItem& item = items_.emplace_back();
        QString everySystem;
        while (nextChild()) {
            if (xml_.namespaceUri() == sparkle)
                sparkleElement(item, everySystem);
            else if (xml_.namespaceUri().isEmpty() && xml_.name() == "enclosure"_L1)
                enclosure(item);
            else
                skip();
        }
        for (AppcastPackage& package : item.packages)
            if (package.system.isEmpty())
                package.system = everySystem;
        if (item.name.isEmpty())
            item.name = item.version;
    }

    void sparkleElement(AppcastItem& item, QString& everySystem) {
        const std::pair<QLatin1String, QString&> texts[] = {{"version"_L1, item.version},
                                                            {"shortVersionString"_L1, item.name},
                                                            {"minimumSystemVersion"_L1, item.minimumSystem},
                                                            {"channel"_L1, item.channel},
                                                            {"os"_L1, everySystem}};
        const QString name = xml_.name().toString();
        const QString text = skip();
        for (const auto& [element, kept] : texts)
            if (name == element)
                kept = text;
        if (name == "releaseNotesLink"_L1)
            item.notes = base_.resolved(QUrl(text));
    }

    void enclosure(AppcastItem& item) {
        const auto attributes = xml_.attributes();
        const auto own = [&attributes](const char* name) {
            return attributes.value(sparkle, QLatin1String(name)).trimmed().toString();
        };
        item.packages.push_back({base_.resolved(QUrl(attributes.value("url"_L1).toString())), own("os"),
                                 own("edSignature"), attributes.value("length"_L1).toLongLong()});
        // Older feeds tell the version here.
        if (item.version.isEmpty())
            item.version = own("version");
        if (item.name.isEmpty())
            item.name = own("shortVersionString");
        skip();
    }

    QXmlStreamReader xml_;
    QUrl base_;
    std::vector<AppcastItem> items_;
};

const AppcastPackage* packageFor(const AppcastReader& reader, const AppcastItem& item) {
    for (const AppcastPackage& package : item.packages) {
        const bool ours =
            package.system.isEmpty() || package.system.compare("linux"_L1, Qt::CaseInsensitive) == 0;
        if (ours && package.address.path().endsWith(reader.packageEnding))
            return &package;
    }
    return nullptr;
}

} // namespace

std::weak_ordering versionOrder(const QString& left, const QString& right) {
    Parts lefts(left);
    Parts rights(right);
    std::weak_ordering order = std::weak_ordering::equivalent;
    while (order == 0 && !(lefts.atEnd() && rights.atEnd()))
        order = lefts.next() <=> rights.next();
    return order;
}

std::optional<std::vector<AppcastItem>> parseAppcast(const QByteArray& bytes, const QUrl& base) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    if (decoder.hasError() || crowded(text))
        return std::nullopt;
    return Parser(text, base).run();
}

std::variant<AppcastNews, AppcastOffer> newestFor(const AppcastReader& reader,
                                                  const std::vector<AppcastItem>& items) {
    AppcastNews news = AppcastNews::None;
    std::optional<AppcastOffer> best;
    for (const AppcastItem& item : items) {
        const AppcastPackage* package = packageFor(reader, item);
        const QString& known = best ? best->item.version : reader.runningVersion;
        if (package == nullptr || !item.channel.isEmpty() || item.version.isEmpty() ||
            versionOrder(item.version, known) <= 0)
            continue;
        if (versionOrder(item.minimumSystem, reader.systemVersion) > 0)
            news = AppcastNews::SystemTooOld;
        else
            best = {item, *package};
    }
    if (best)
        return *std::move(best);
    return news;
}

} // namespace kelpa
