// zor-tool settings: read and change settings documents through the store,
// so a changed file comes out exactly as the module itself writes it (in
// the document's own encoding), or is refused with the old file intact.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include "store/cserialize.h"
#include "store/cxmltagv2.h"
#include "module/zor_cp1251.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <vector>

namespace {

void dumpTag(const CXmlTagV2* tag, int level)
{
    QTextStream& s = ZorTool::out();
    const QString indent(level * 4, QLatin1Char(' '));
    s << indent << tag->name() << '\n';
    for (const CXmlAttribute& a : tag->attributes())
        s << indent << "    @" << a.name << " = " << a.value << '\n';
    if (!tag->value().isEmpty() && tag->children().isEmpty())
        s << indent << "    = " << tag->value() << '\n';
    for (int i = 0; i < tag->children().count(); ++i)
        dumpTag(tag->getNumTag(i), level + 1);
}

QJsonObject jsonTag(const CXmlTagV2* tag)
{
    QJsonArray attributes;
    for (const CXmlAttribute& a : tag->attributes())
        attributes.append(QJsonObject{{QStringLiteral("name"), a.name}, {QStringLiteral("value"), a.value}});
    QJsonArray children;
    for (int i = 0; i < tag->children().count(); ++i)
        children.append(jsonTag(tag->getNumTag(i)));
    QJsonObject o{{QStringLiteral("name"), tag->name()}, {QStringLiteral("attributes"), attributes}};
    if (!tag->value().isEmpty())
        o.insert(QStringLiteral("text"), tag->value());
    o.insert(QStringLiteral("children"), children);
    return o;
}

void listPaths(const CXmlTagV2* top)
{
    std::vector<std::pair<const CXmlTagV2*, QString>> work{{top, top->name()}};
    while (!work.empty()) {
        const auto [tag, path] = work.back();
        work.pop_back();
        ZorTool::out() << path << '\n';
        for (int i = tag->children().count() - 1; i >= 0; --i)
            work.emplace_back(tag->getNumTag(i), path + QLatin1Char('/') + tag->getNumTag(i)->name());
    }
}

// NODEPATH names elements below the root. Documents written by a form
// often have the form's node itself as root, so a first name that is no
// child of the root but is the root's own name stands for the root.
QStringList pathBelowRoot(const CSerialize& doc, const QString& path)
{
    QStringList names = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const CXmlTagV2* root = doc.root();
    if (root && !names.isEmpty() && names.first() == root->name() && !root->getTagFromName(names.first()))
        names.removeFirst();
    return names;
}

CXmlTagV2* findPath(const CSerialize& doc, const QString& path)
{
    CXmlTagV2* tag = doc.root();
    for (const QString& name : pathBelowRoot(doc, path)) {
        if (!tag)
            break;
        tag = tag->getTagFromName(name);
    }
    return tag;
}

// The element of the path, created (first match, else appended) as needed.
CXmlTagV2* makePath(CSerialize& doc, const QString& path)
{
    QStringList names = pathBelowRoot(doc, path);
    if (!doc.root()) {
        if (names.isEmpty())
            return nullptr;
        doc.topNode(names.takeFirst(), true);
    }
    CXmlTagV2* tag = doc.root();
    for (const QString& name : names) {
        CXmlTagV2* child = tag->getTagFromName(name);
        tag = child ? child : tag->addTagNode(name);
    }
    return tag;
}

struct Request
{
    QString command;
    QString file;
    QString path;
    QString attribute; // empty with --text
    QString value;
    bool text = false;
    bool json = false;
    bool lossy = false;
};

// The first character of text the document's encoding cannot hold, as
// "U+XXXX" with the character; empty when every one fits.
QString unencodable(const QString& text, const XmlWriter::Encoding& enc)
{
    if (enc.codec)
        return QString(); // the writer refuses these itself, naming them
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.unicode() < 128 || ZOR_Cp1251::canEncode(c))
            continue;
        const bool pair = c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        const uint code = pair ? QChar::surrogateToUcs4(c, text.at(i + 1)) : c.unicode();
        return QStringLiteral("\"%1\" (U+%2)")
            .arg(text.mid(i, pair ? 2 : 1), QString::number(code, 16).toUpper().rightJustified(4, QLatin1Char('0')));
    }
    return QString();
}

// Refuses (or, with --lossy, turns into what the file will hold) a name or
// value the document's encoding cannot hold.
bool encodable(const CSerialize& doc, Request& r, QString& error)
{
    QString* texts[] = {&r.path, &r.attribute, &r.value};
    for (QString* t : texts) {
        const QString bad = unencodable(*t, doc.encoding());
        if (bad.isEmpty())
            continue;
        if (!r.lossy) {
            error = QStringLiteral("%1: the character %2 cannot be stored in %3 (--lossy stores it as \"_\")")
                        .arg(r.file, bad, QString::fromLatin1(doc.encoding().name));
            return false;
        }
        *t = XmlWriter::storedText(*t, doc.encoding());
    }
    return true;
}

int save(CSerialize& doc, const QString& file)
{
    if (!doc.save())
        return ZorTool::fail(1, doc.errorString());
    if (doc.droppedMarkup() > 0) {
        ZorTool::err() << "zor-tool: note: " << file << ": " << doc.droppedMarkup()
                       << " comment(s) or processing instruction(s) were not kept\n";
        ZorTool::err().flush();
    }
    return 0;
}

int apply(CSerialize& doc, const Request& r);

int run(const Request& r)
{
    const bool fromStdin = r.file == QLatin1String("-");
    const bool changes = r.command == QLatin1String("set") || r.command == QLatin1String("del");
    if (fromStdin && changes)
        return ZorTool::fail(
            2, QStringLiteral("settings %1 changes a file; standard input cannot be changed").arg(r.command));
    CSerialize doc;
    if (changes && !doc.lockForUpdate(r.file))
        return ZorTool::fail(1, doc.errorString());
    if (fromStdin) {
        QByteArray bytes;
        QString error;
        if (!ZorTool::readFile(r.file, bytes, &error))
            return ZorTool::fail(2, error);
        if (!doc.openData(bytes))
            return ZorTool::fail(1, QStringLiteral("standard input: %1").arg(doc.errorString()));
    } else {
        const QFileInfo info(r.file);
        if (!info.isFile() || !info.isReadable())
            return ZorTool::fail(2,
                QStringLiteral("cannot read %1: %2")
                    .arg(r.file, info.exists() ? QStringLiteral("permission denied") : QStringLiteral("no such file")));
        if (!doc.openFile(r.file))
            return ZorTool::fail(1, doc.errorString());
    }

    if (r.command == QLatin1String("dump")) {
        if (r.json) {
            const QByteArray bytes =
                QJsonDocument(doc.root() ? jsonTag(doc.root()) : QJsonObject()).toJson(QJsonDocument::Indented);
            std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        } else if (doc.root()) {
            dumpTag(doc.root(), 0);
        }
        return 0;
    }
    if (r.command == QLatin1String("paths")) {
        if (doc.root())
            listPaths(doc.root());
        return 0;
    }
    if (r.command == QLatin1String("get")) {
        CXmlTagV2* tag = findPath(doc, r.path);
        if (!tag)
            return ZorTool::fail(1, QStringLiteral("%1: no element '%2'").arg(r.file, r.path));
        if (r.text) {
            ZorTool::out() << tag->value() << '\n';
            return 0;
        }
        const int i = tag->attributeIndex(r.attribute);
        if (i < 0)
            return ZorTool::fail(1, QStringLiteral("%1: no attribute '%2' at '%3'").arg(r.file, r.attribute, r.path));
        ZorTool::out() << tag->attributes().at(i).value << '\n';
        return 0;
    }
    QString error;
    Request change = r;
    if (changes && !encodable(doc, change, error))
        return ZorTool::fail(1, error);
    return apply(doc, change);
}

int apply(CSerialize& doc, const Request& r)
{
    if (r.command == QLatin1String("del")) {
        CXmlTagV2* tag = findPath(doc, r.path);
        if (!tag || r.path.isEmpty())
            return ZorTool::fail(1, QStringLiteral("%1: no element '%2'").arg(r.file, r.path));
        if (r.attribute.isEmpty()) {
            doc.removeTag(tag);
        } else {
            const int i = tag->attributeIndex(r.attribute);
            if (i < 0)
                return ZorTool::fail(
                    1, QStringLiteral("%1: no attribute '%2' at '%3'").arg(r.file, r.attribute, r.path));
            tag->attributesRef().removeAt(i);
            if (tag->attributes().isEmpty() && tag->kind() == CXmlTagV2::KindAttributes)
                tag->setKind(CXmlTagV2::KindPlain);
        }
        return save(doc, r.file);
    }
    CXmlTagV2* tag = makePath(doc, r.path);
    if (!tag)
        return ZorTool::fail(1, QStringLiteral("%1: the document is empty and NODEPATH names no element").arg(r.file));
    if (r.text) {
        tag->setValue(r.value);
    } else {
        tag->setTagValue(r.attribute, r.value);
        if (tag->kind() == CXmlTagV2::KindPlain)
            tag->setKind(CXmlTagV2::KindAttributes);
    }
    return save(doc, r.file);
}

} // namespace

int toolSettings(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Read and change settings documents.\n"
                       "  settings dump FILE [--json]\n"
                       "  settings paths FILE\n"
                       "  settings get FILE NODEPATH ATTR     (--text: get FILE NODEPATH)\n"
                       "  settings set FILE NODEPATH ATTR VALUE  (--text: set FILE NODEPATH VALUE)\n"
                       "  settings del FILE NODEPATH [ATTR]   (the attribute, or the element)\n"
                       "NODEPATH is element names joined by '/' below the root. FILE '-' reads\n"
                       "standard input (dump, paths, get). A change is saved in the document's\n"
                       "own encoding, or refused, with the file left as it was, when the result\n"
                       "would not read back, or when the document's encoding cannot hold a\n"
                       "character of NODEPATH, ATTR or VALUE (--lossy stores it as \"_\").\n"
                       "Changes to one file queue behind each other; a file changed by another\n"
                       "program meanwhile is not overwritten."));
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("dump, paths, get, set or del"));
    const QCommandLineOption text(QStringLiteral("text"), QStringLiteral("get or set the element's text"));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("dump as JSON"));
    const QCommandLineOption lossy(
        QStringLiteral("lossy"), QStringLiteral("set: store characters the encoding lacks as \"_\""));
    parser.addOption(text);
    parser.addOption(json);
    parser.addOption(lossy);
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;
    QStringList pos = parser.positionalArguments();
    Request r;
    r.command = pos.value(0);
    r.text = parser.isSet(text);
    r.json = parser.isSet(json);
    r.lossy = parser.isSet(lossy);
    if (!pos.isEmpty())
        pos.removeFirst();
    struct Shape
    {
        const char* command;
        int plain;
        int withText;
    };
    static const Shape kShapes[] = {{"dump", 1, -1}, {"paths", 1, -1}, {"get", 3, 2}, {"set", 4, 3}, {"del", -2, -1}};
    const Shape* shape = nullptr;
    for (const Shape& s : kShapes)
        if (r.command == QLatin1String(s.command))
            shape = &s;
    if (!shape)
        return ZorTool::fail(
            2, QStringLiteral("settings: unknown command '%1' (dump, paths, get, set or del)").arg(r.command));
    if (r.json && r.command != QLatin1String("dump"))
        return ZorTool::fail(2, QStringLiteral("settings %1: --json is for dump").arg(r.command));
    const int wanted = r.text ? shape->withText : shape->plain;
    const bool fits = wanted == -2 ? (pos.size() == 2 || pos.size() == 3) : pos.size() == wanted;
    if (!fits)
        return ZorTool::fail(2,
            wanted == -1 ? QStringLiteral("settings %1: --text does not apply").arg(r.command)
                         : QStringLiteral("settings %1: wrong number of arguments (try --help)").arg(r.command));
    r.file = pos.value(0);
    r.path = pos.value(1);
    if (r.text) {
        r.value = pos.value(2);
    } else {
        r.attribute = pos.value(2);
        r.value = pos.value(3);
    }
    return run(r);
}
