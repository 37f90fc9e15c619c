#include "zor_tmi_fieldset.h"

#include "store/cserialize.h"
#include "store/cxmltagv2.h"
#include "store/cxmlworkdata.h"
#include "store/zor_settingsnode.h"
#include "telemetry/tmipage_base.h"
#include "zor_tmi_texts.h"

#include <QRegularExpression>

namespace {

int lastFieldOf(int nVersion)
{
    return nVersion == 1 ? ZorTmi::LastFieldKite1 : nVersion == 2 ? ZorTmi::LastFieldKite2 : ZorTmi::FieldCount;
}

const unsigned char* bytes(const QByteArray& mask)
{
    return reinterpret_cast<const unsigned char*>(mask.constData());
}

} // namespace

ZOR_TmiFieldSet::ZOR_TmiFieldSet()
    : m_mask(ZorTmi::MaskBytes, '\0')
{
    for (int n = 1; n <= ZorTmi::FieldCount; ++n)
        setField(n, true);
}

ZOR_TmiFieldSet ZOR_TmiFieldSet::full(int nVersion)
{
    ZOR_TmiFieldSet set;
    set.setVersion(nVersion);
    return set;
}

void ZOR_TmiFieldSet::setVersion(int nVersion)
{
    if (nVersion >= 1 && nVersion <= 3)
        m_nVersion = nVersion;
}

void ZOR_TmiFieldSet::setMask(const QByteArray& mask)
{
    m_mask = mask.left(ZorTmi::MaskBytes);
    m_mask.append(QByteArray(ZorTmi::MaskBytes - m_mask.size(), '\0'));
}

bool ZOR_TmiFieldSet::has(int n) const
{
    return n >= 1 && n <= lastField() && ZorTmi::maskBit(bytes(m_mask), n);
}

void ZOR_TmiFieldSet::setField(int n, bool bOn)
{
    if (n >= 1 && n <= ZorTmi::FieldCount)
        ZorTmi::setMaskBit(reinterpret_cast<unsigned char*>(m_mask.data()), n, bOn);
}

bool ZOR_TmiFieldSet::parse(const QString& qsText, QString* lpError)
{
    QString qsCompact = qsText;
    qsCompact.remove(QRegularExpression(QStringLiteral("\\s")));
    if (qsCompact.isEmpty()) {
        if (lpError)
            *lpError = zorTmiText("fs_empty");
        return false;
    }
    static const QRegularExpression reBits(QStringLiteral("^[01]+$"));
    static const QRegularExpression reHex(QStringLiteral("^[0-9A-Fa-f]{64}$"));
    if (reBits.match(qsCompact).hasMatch()) {
        if (qsCompact.size() > ZorTmi::FieldCount) {
            if (lpError)
                *lpError = zorTmiText("fs_too_long").arg(qsCompact.size());
            return false;
        }
        QByteArray mask(ZorTmi::MaskBytes, '\0');
        int nCount = 0;
        TmiPage_Base::getArrSzFormat(qsCompact, reinterpret_cast<unsigned char*>(mask.data()), nCount);
        m_mask = mask;
        return true;
    }
    if (!reHex.match(qsCompact).hasMatch()) {
        if (lpError)
            *lpError = zorTmiText("fs_bad_text");
        return false;
    }
    m_mask = QByteArray::fromHex(qsCompact.toLatin1());
    return true;
}

QString ZOR_TmiFieldSet::text() const
{
    return TmiPage_Base::formatText(bytes(m_mask));
}

QString ZOR_TmiFieldSet::hex() const
{
    return QString::fromLatin1(m_mask.toHex().toUpper());
}

int ZOR_TmiFieldSet::versionFromCode(const QString& qsCode)
{
    return qsCode == QLatin1String("10") ? 1 : qsCode == QLatin1String("20") ? 2 : 3;
}

bool ZOR_TmiFieldSet::readProtocolElement(const QString& qsFormatCode, const QString& qsMask)
{
    ZOR_TmiFieldSet set;
    set.setVersion(versionFromCode(qsFormatCode));
    // The form keeps every position "0" or "1"; other characters read as "0".
    QByteArray mask(ZorTmi::MaskBytes, '\0');
    int nCount = 0;
    TmiPage_Base::getArrSzFormat(qsMask, reinterpret_cast<unsigned char*>(mask.data()), nCount);
    set.m_mask = mask;
    *this = set;
    return true;
}

bool ZOR_TmiFieldSet::readSettingsFile(const QString& qsFileName, QString* lpError)
{
    auto fail = [lpError](const QString& qsWhy) {
        if (lpError)
            *lpError = qsWhy;
        return false;
    };
    CSerialize document;
    if (!document.openFile(qsFileName, false))
        return fail(document.errorString());
    CXmlTagV2* lpTop = document.topNode(QStringLiteral("CONFIG"), false);
    if (!lpTop)
        return fail(zorTmiText("fs_no_protocol"));
    CXMLWorkData root(&document, lpTop);
    const auto lpProtocol = ZOR_SettingsNode::openForRead(&root, QStringLiteral("PROTOCOL"));
    const auto lpKite = lpProtocol ? ZOR_SettingsNode::openForRead(lpProtocol.get(), QStringLiteral("KITE")) : nullptr;
    const CXmlTagV2* lpTag = lpKite ? lpKite->getTag() : nullptr;
    const int nMask = lpTag ? lpTag->attributeIndex(QStringLiteral("mask")) : -1;
    if (nMask < 0)
        return fail(zorTmiText("fs_no_protocol"));
    QString qsFormat;
    lpKite->readString("format", QString(), qsFormat);
    return readProtocolElement(qsFormat, lpTag->attributes().at(nMask).value);
}

QString ZOR_TmiFieldSet::caption(int n)
{
    const int nColumns = TmiPage_Base::csvColumnCount(n);
    if (nColumns == 0)
        return QLatin1String(ZorTmi::field(n).name);
    QStringList parts;
    for (int i = 0; i < qMin(nColumns, 3); ++i)
        parts << TmiPage_Base::csvColumnCaption(n, i);
    if (nColumns > 3)
        parts << QStringLiteral("…");
    return parts.join(QStringLiteral(", "));
}

int ZOR_TmiFieldSet::lastField() const
{
    return lastFieldOf(m_nVersion);
}

int ZOR_TmiFieldSet::recordSize() const
{
    int nSize = 0;
    for (int n = 1; n <= lastField(); ++n)
        if (has(n))
            nSize += ZorTmi::field(n).width;
    return nSize;
}

int ZOR_TmiFieldSet::fieldOffset(int n) const
{
    if (!has(n))
        return -1;
    int nOffset = 0;
    for (int k = 1; k < n; ++k)
        if (has(k))
            nOffset += ZorTmi::field(k).width;
    return nOffset;
}

int ZOR_TmiFieldSet::fieldAt(int nByte) const
{
    if (nByte < 0)
        return 0;
    int nOffset = 0;
    for (int n = 1; n <= lastField(); ++n) {
        if (!has(n))
            continue;
        nOffset += ZorTmi::field(n).width;
        if (nByte < nOffset)
            return n;
    }
    return 0;
}

std::unique_ptr<TmiPage_Base> ZOR_TmiFieldSet::makeRecord() const
{
    std::unique_ptr<TmiPage_Base> record = TmiPage_Base::create(m_nVersion); // always 1, 2 or 3
    record->setPageFormat(bytes(m_mask));
    return record;
}
