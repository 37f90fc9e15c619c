#include "zor_form_document.h"

#include "config/zor_form_config.h"
#include "store/cserialize.h"
#include "store/cxmlworkdata.h"

namespace ZorFormDocument {

const QByteArray kDecl("<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n");

QByteArray config(const QByteArray& body)
{
    return kDecl + "<CONFIG>\n" + body + "</CONFIG>\n";
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

} // namespace ZorFormDocument
