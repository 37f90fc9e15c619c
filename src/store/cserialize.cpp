#include "store/cserialize.h"

#include "store/cxmldefaulthandler.h"
#include "store/cxmltagv2.h"
#include "store/xmlwriter.h"
#include "module/zor_cp1251.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

#include <cstring>

QT_WARNING_DISABLE_DEPRECATED

CSerialize::~CSerialize() = default;

bool CSerialize::openFile(const QString& qsFileName)
{
    m_qsFileName = qsFileName;
    QFile file(qsFileName);
    if (!file.exists()) {
        if (!file.open(QIODevice::WriteOnly)) {
            m_qsError = QStringLiteral("cannot create %1: %2").arg(qsFileName, file.errorString());
            return false;
        }
        return true;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        m_qsError = QStringLiteral("cannot read %1: %2").arg(qsFileName, file.errorString());
        return false;
    }
    return parse(file.readAll());
}

bool CSerialize::openData(const QByteArray& data)
{
    return parse(data);
}

bool CSerialize::parse(const QByteArray& data)
{
    m_top.deleteAll();
    if (data.isEmpty())
        return true;
    // Control characters other than tab and line ends are not text in any
    // settings document; the reader would let some of them through.
    for (const char c : data) {
        const unsigned char b = static_cast<unsigned char>(c);
        if (b < 0x20 && b != '\t' && b != '\n' && b != '\r') {
            m_qsError = QStringLiteral("byte 0x%1 is not text").arg(int(b), 2, 16, QLatin1Char('0'));
            return false;
        }
    }
    // The bytes are decoded by the module's own Windows-1251 rule rather than
    // by the codec the declaration names.
    QXmlInputSource source;
    source.setData(ZOR_Cp1251::decode(data));
    CXmlDefaultHandler handler(m_top);
    QXmlSimpleReader reader;
    reader.setContentHandler(&handler);
    reader.setErrorHandler(&handler);
    reader.setLexicalHandler(&handler);
    reader.setDeclHandler(&handler);
    reader.setDTDHandler(&handler);
    const bool ok = reader.parse(&source, false);
    if (!ok || !handler.sawElement()) {
        m_qsError = ok ? QStringLiteral("the document has no element") : handler.errorText();
        if (m_qsError.isEmpty())
            m_qsError = QStringLiteral("not a settings document");
        m_top.deleteAll();
        return false;
    }
    return true;
}

CXmlTagV2* CSerialize::topNode(const QString& qsName, bool bCreate)
{
    CXmlTagV2* top = root();
    if (!top) {
        if (!bCreate)
            return nullptr;
        top = new CXmlTagV2(qsName);
        m_top.append(top);
        return top;
    }
    if (top->name() == qsName)
        return top;
    if (CXmlTagV2* child = top->getTagFromName(qsName))
        return child;
    return bCreate ? top->addTagNode(qsName) : nullptr;
}

void CSerialize::clearTag(CXmlTagV2* tag)
{
    if (!tag)
        return;
    tag->attributesRef().clear();
    tag->setValue(QString());
    CFxXmListlTag& children = tag->children();
    for (int i = 0; i < children.count(); ++i)
        children.getNumTag(i)->setDetached();
    children.moveAllTo(m_detached);
}

bool CSerialize::isGoodTag(const CXmlTagV2* tag) const
{
    if (!tag)
        return false;
    while (tag->parent()) {
        if (tag->isDetached())
            return false;
        tag = tag->parent();
    }
    return m_top.indexOf(tag) >= 0;
}

QByteArray CSerialize::render() const
{
    return XmlWriter::render(m_top);
}

const QByteArray& CSerialize::renderToBuffer()
{
    m_rendered = render();
    return m_rendered;
}

bool CSerialize::save()
{
    QSaveFile file(m_qsFileName);
    if (!file.open(QIODevice::WriteOnly)) {
        m_qsError = file.errorString();
        return false;
    }
    const QByteArray bytes = render();
    if (file.write(bytes) != bytes.size() || !file.commit()) {
        m_qsError = file.errorString();
        file.cancelWriting();
        return false;
    }
    return true;
}

bool CSerialize::saveAs(const QString& qsFileName)
{
    const QString qsOld = m_qsFileName;
    m_qsFileName = qsFileName;
    if (save())
        return true;
    m_qsFileName = qsOld;
    return false;
}

bool zor_StartSZ(coreSzCreate* lpCreate)
{
    if (!lpCreate)
        return false;
    lpCreate->lpSerialize = nullptr;
    const int n = int(strnlen(lpCreate->szFileName, sizeof lpCreate->szFileName - 1));
    const QString name = ZOR_Cp1251::decode(lpCreate->szFileName, n);
    if (name.isEmpty())
        return false;
    CSerialize* doc = new CSerialize;
    if (!doc->openFile(name)) {
        delete doc;
        return false;
    }
    lpCreate->lpSerialize = doc;
    return true;
}

bool zor_StopSZ(CSerialize* lpSerialize, bool bSave)
{
    if (!lpSerialize)
        return false;
    const bool ok = !bSave || lpSerialize->save();
    delete lpSerialize;
    return ok;
}

bool zor_StartSZMemo(coreSzMemo* lpMemo)
{
    if (!lpMemo)
        return false;
    lpMemo->lpSerialize = nullptr;
    if (lpMemo->nSize < 0 || (lpMemo->nSize > 0 && !lpMemo->lpData))
        return false;
    CSerialize* doc = new CSerialize;
    if (!doc->openData(QByteArray::fromRawData(lpMemo->lpData, lpMemo->nSize))) {
        delete doc;
        return false;
    }
    lpMemo->lpSerialize = doc;
    return true;
}

bool zor_GetSZMemo(CSerialize* lpSerialize, coreSzMemo* lpMemo)
{
    if (!lpSerialize || !lpMemo)
        return false;
    const QByteArray& buffer = lpSerialize->renderToBuffer();
    lpMemo->lpData = buffer.constData();
    lpMemo->nSize = buffer.size();
    lpMemo->lpSerialize = lpSerialize;
    return true;
}

void zor_StopSZMemo(CSerialize* lpSerialize)
{
    delete lpSerialize;
}
