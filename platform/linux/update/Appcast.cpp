#include "platform/linux/update/Appcast.h"

#include <QStringDecoder>
#include <QXmlStreamReader>
#include <algorithm>

namespace kelpa {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// A run of digits, a run of letters, or the end.
struct Part {
    enum class Kind { Word, End, Number }; ///< in the order in which they make a version later
    Kind kind = Kind::End;
    std::string_view text;
};

class Parts {
  public:
    explicit Parts(std::string_view version) : rest_(version.substr(0, version.find('+'))) {}

    Part next() {
        while (!rest_.empty() && !isDigit(rest_.front()) && !isLetter(rest_.front()))
            rest_.remove_prefix(1);
        if (rest_.empty())
            return {};
        const bool number = isDigit(rest_.front());
        const auto end = std::find_if_not(rest_.begin(), rest_.end(), number ? isDigit : isLetter);
        const auto length = static_cast<std::size_t>(end - rest_.begin());
        const Part part{number ? Part::Kind::Number : Part::Kind::Word, rest_.substr(0, length)};
        rest_.remove_prefix(length);
        return part;
    }

  private:
    std::string_view rest_;
};

std::string_view withoutZeros(std::string_view digits) {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

std::weak_ordering numberOrder(std::string_view left, std::string_view right) {
    left = withoutZeros(left);
    right = withoutZeros(right);
    if (left.size() != right.size())
        return left.size() <=> right.size();
    return left <=> right;
}

std::weak_ordering wordOrder(std::string_view left, std::string_view right) {
    return std::lexicographical_compare_three_way(
        left.begin(), left.end(), right.begin(), right.end(),
        [](char a, char b) -> std::weak_ordering { return lower(a) <=> lower(b); });
}

/// The end counts as a zero beside a number: 1 and 1.0 are the same.
std::weak_ordering partOrder(const Part& left, const Part& right) {
    if (left.kind == Part::Kind::Word || right.kind == Part::Kind::Word)
        return left.kind == right.kind ? wordOrder(left.text, right.text) : left.kind <=> right.kind;
    return numberOrder(left.text, right.text);
}

/// Elements in an element of an item; the text of a release may bring some markup of its own.
constexpr int deepest = 32;
/// The parser compares every attribute of an element with every other one.
constexpr int mostAttributes = 400;
const QLatin1String sparkle("http://www.andymatuschak.org/xml-namespaces/sparkle");

std::weak_ordering order(const QString& left, const QString& right) {
    return versionOrder(left.toStdString(), right.toStdString());
}

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
        if (!enter(QLatin1String("rss")) || !enter(QLatin1String("channel")))
            return std::nullopt;
        while (nextChild()) {
            if (xml_.name() == QLatin1String("item"))
                item();
            else
                skip();
        }
        // What stands behind the channel has to be well-formed as well.
        while (!refused_ && !xml_.atEnd())
            next();
        if (refused_ || xml_.hasError())
            return std::nullopt;
        return std::move(items_);
    }

  private:
    QXmlStreamReader::TokenType next() {
        const auto token = xml_.readNext();
        refused_ = refused_ || token == QXmlStreamReader::DTD;
        return token;
    }

    /// Goes on to the next element in the current one; false at its end.
    bool nextChild() {
        while (!refused_ && !xml_.atEnd()) {
            const auto token = next();
            if (token == QXmlStreamReader::StartElement)
                return true;
            if (token == QXmlStreamReader::EndElement)
                return false;
        }
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
        for (int depth = 1; depth > 0 && !refused_ && !xml_.atEnd();) {
            const auto token = next();
            if (token == QXmlStreamReader::StartElement)
                refused_ = ++depth > deepest;
            else if (token == QXmlStreamReader::EndElement)
                --depth;
            else if (token == QXmlStreamReader::Characters && depth == 1)
                text += xml_.text();
        }
        return text.trimmed();
    }

    void item() {
        AppcastItem& item = items_.emplace_back();
        QString everySystem;
        while (nextChild()) {
            if (xml_.namespaceUri() == sparkle)
                sparkleElement(item, everySystem);
            else if (xml_.namespaceUri().isEmpty() && xml_.name() == QLatin1String("enclosure"))
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
        const QString name = xml_.name().toString();
        const QString text = skip();
        if (name == QLatin1String("version"))
            item.version = text;
        else if (name == QLatin1String("shortVersionString"))
            item.name = text;
        else if (name == QLatin1String("minimumSystemVersion"))
            item.minimumSystem = text;
        else if (name == QLatin1String("channel"))
            item.channel = text;
        else if (name == QLatin1String("os"))
            everySystem = text;
        else if (name == QLatin1String("releaseNotesLink"))
            item.notes = base_.resolved(QUrl(text));
    }

    void enclosure(AppcastItem& item) {
        const auto attributes = xml_.attributes();
        const auto own = [&attributes](const char* name) {
            return attributes.value(sparkle, QLatin1String(name)).trimmed().toString();
        };
        item.packages.push_back({base_.resolved(QUrl(attributes.value(QLatin1String("url")).toString())),
                                 own("os"), own("edSignature"),
                                 attributes.value(QLatin1String("length")).toLongLong()});
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
    bool refused_ = false;
};

const AppcastPackage* packageFor(const AppcastReader& reader, const AppcastItem& item) {
    for (const AppcastPackage& package : item.packages) {
        const bool ours = package.system.isEmpty() ||
                          package.system.compare(QLatin1String("linux"), Qt::CaseInsensitive) == 0;
        if (ours && package.address.path().endsWith(reader.packageEnding))
            return &package;
    }
    return nullptr;
}

} // namespace

std::weak_ordering versionOrder(std::string_view left, std::string_view right) {
    Parts lefts(left);
    Parts rights(right);
    for (;;) {
        const Part a = lefts.next();
        const Part b = rights.next();
        if (a.kind == Part::Kind::End && b.kind == Part::Kind::End)
            return std::weak_ordering::equivalent;
        if (const auto order = partOrder(a, b); order != 0)
            return order;
    }
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
            order(item.version, known) <= 0)
            continue;
        if (order(item.minimumSystem, reader.systemVersion) > 0)
            news = AppcastNews::SystemTooOld;
        else
            best = {item, *package};
    }
    if (best)
        return *std::move(best);
    return news;
}

} // namespace kelpa
