#include "zor_form_document.h"

#include "config/zor_form_config.h"
#include "store/cserialize.h"
#include "store/cxmlworkdata.h"

#include <QFile>
#include <QtDebug>

namespace ZorFormDocument {

const QByteArray kDecl("<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n");

QByteArray config(const QByteArray& body)
{
    return body.isEmpty() ? kDecl + "<CONFIG />\n" : kDecl + "<CONFIG>\n" + body + "</CONFIG>\n";
}

bool load(ZOR_Form_Config& form, const QByteArray& bytes)
{
    CSerialize doc;
    if (!doc.openData(bytes))
        return false;
    CXMLWorkData root(&doc, doc.root());
    form.readFormParam(&root);
    return true;
}

QByteArray save(ZOR_Form_Config& form)
{
    CSerialize doc;
    doc.openData(QByteArray());
    CXMLWorkData root(&doc, doc.topNode(QStringLiteral("CONFIG"), true));
    form.writeFormParam(&root);
    return doc.render();
}

QByteArray readFile(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QByteArray nodeLine(const QByteArray& rendered, const QByteArray& name)
{
    for (const QByteArray& line : rendered.split('\n')) {
        const QByteArray l = line.trimmed();
        if (l.startsWith("<" + name + " ") || l.startsWith("<" + name + ">"))
            return l;
    }
    return QByteArray();
}

Doc::Doc(const QVector<ZOR_ConfigPage>& pages, const ZOR_TerminalProfile& profile)
{
    doc.setProfile(profile);
    if (pages.isEmpty())
        doc.createForms();
    else
        doc.createForms(nullptr, pages);
}

bool Doc::load(const QByteArray& bytes)
{
    if (writeFile(path(), bytes) && doc.load(path()))
        return true;
    qWarning() << "not loaded:" << doc.errorString();
    return false;
}

} // namespace ZorFormDocument
