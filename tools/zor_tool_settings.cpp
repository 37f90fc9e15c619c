// zor-tool settings: read and change settings documents through the store,
// so a changed file comes out exactly as the module itself writes it.

#include "zor_tool.h"
#include "zor_tool_common.h"

#include "module/zor_cp1251.h"
#include "store/cserialize.h"
#include "store/cxmltagv2.h"
#include "store/cxmlworkdata.h"

#include <QFileInfo>

#include <memory>

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

int run(const QString& command, const QStringList& pos)
{
    const QString& file = pos.at(0);
    if (!QFileInfo(file).isFile())
        return ZorTool::fail(2, QStringLiteral("cannot read %1: no such file").arg(file));
    CSerialize doc;
    if (!doc.openFile(file))
        return ZorTool::fail(QFileInfo(file).isReadable() ? 1 : 2, doc.errorString());

    if (command == QLatin1String("dump")) {
        if (doc.root())
            dumpTag(doc.root(), 0);
        ZorTool::out().flush();
        return 0;
    }
    const QString& path = pos.at(1);
    const QByteArray attr = ZOR_Cp1251::encode(pos.at(2));
    if (command == QLatin1String("get")) {
        CXmlTagV2* tag = findPath(doc, path);
        const int i = tag ? tag->attributeIndex(ZOR_Cp1251::decode(attr)) : -1;
        if (i < 0)
            return ZorTool::fail(1, QStringLiteral("%1: no attribute '%2' at '%3'").arg(file, pos.at(2), path));
        ZorTool::out() << tag->attributes().at(i).value << '\n';
        ZorTool::out().flush();
        return 0;
    }
    const QStringList names = pathBelowRoot(doc, path);
    if (!doc.root() && names.isEmpty())
        return ZorTool::fail(1, QStringLiteral("%1: the document is empty and NODEPATH names no element").arg(file));
    // An empty document gets the first name as its root.
    const int first = doc.root() ? 0 : 1;
    std::unique_ptr<CXMLWorkData> cursor(doc.root() ? new CXMLWorkData(&doc, doc.root())
                                                    : new CXMLWorkData(&doc, names.first()));
    for (int i = first; i < names.size(); ++i)
        cursor.reset(cursor->createNode(names.at(i), CXMLWorkData::NodeFindOrAppend));
    cursor->writeString(attr.constData(), pos.at(3));
    cursor->writeParameters();
    cursor.reset();
    if (!doc.save())
        return ZorTool::fail(1, doc.errorString());
    return 0;
}

} // namespace

int toolSettings(const QStringList& args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Read and change settings documents.\n"
        "  settings dump FILE\n"
        "  settings get FILE NODEPATH ATTR\n"
        "  settings set FILE NODEPATH ATTR VALUE\n"
        "NODEPATH is element names joined by '/' below the root."));
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("dump, get or set"));
    int code = 0;
    if (!ZorTool::parse(parser, args, &code))
        return code;
    QStringList pos = parser.positionalArguments();
    const QString command = pos.value(0);
    if (!pos.isEmpty())
        pos.removeFirst();
    const int wanted = command == QLatin1String("dump") ? 1
                       : command == QLatin1String("get") ? 3
                       : command == QLatin1String("set") ? 4 : -1;
    if (wanted < 0)
        return ZorTool::fail(2, QStringLiteral("settings: unknown command '%1' (dump, get or set)").arg(command));
    if (pos.size() != wanted)
        return ZorTool::fail(2, QStringLiteral("settings %1: expected %2 arguments (try --help)").arg(command).arg(wanted));
    return run(command, pos);
}
