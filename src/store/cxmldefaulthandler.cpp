#include "store/cxmldefaulthandler.h"

#include "store/cfxxmlistltag.h"
#include "store/cxmltagv2.h"
#include "store/xmlwriter.h"

#include <algorithm>

QT_WARNING_DISABLE_DEPRECATED

CXmlDefaultHandler::CXmlDefaultHandler(CFxXmListlTag& topTags)
    : m_top(topTags)
{
}

QString CXmlDefaultHandler::decodeValue(const QString& qsValue)
{
    static const struct { QLatin1String from; QLatin1String to; } kSteps[] = {
        {QLatin1String("&amp;nbsp;"), QLatin1String(" ")},
        {QLatin1String("&nbsp;"), QLatin1String(" ")},
        {QLatin1String("&amp;"), QLatin1String("&")},
        {QLatin1String("&gt;"), QLatin1String(">")},
        {QLatin1String("&lt;"), QLatin1String("<")},
        {QLatin1String("&quot;"), QLatin1String("\"")},
        {QLatin1String("&apos;"), QLatin1String("'")},
        {QLatin1String("_33_"), QLatin1String("!")},
    };
    // Only a step that finds its text changes anything (and may make text
    // for a later one), so a value holding none of them is its own result:
    // "&" and "_" are common in values, the escapes are not.
    const QChar* p = qsValue.constData();
    const int n = qsValue.size();
    bool any = false;
    for (int i = 0; i < n && !any; ++i) {
        if (p[i] != QLatin1Char('&') && p[i] != QLatin1Char('_'))
            continue;
        const QStringView rest(p + i, n - i);
        for (const auto& step : kSteps)
            any = any || rest.startsWith(step.from);
    }
    if (!any)
        return qsValue;
    const bool amp = qsValue.contains(QLatin1Char('&'));
    QString out = qsValue;
    for (const auto& step : kSteps)
        if (amp || step.from.at(0) != QLatin1Char('&'))
            out.replace(step.from, step.to);
    return out;
}

namespace {

// The first control character other than tab and line ends, or -1.
int controlCharAt(const QString& qsText)
{
    const QChar* p = qsText.constData();
    for (int i = 0, n = qsText.size(); i < n; ++i) {
        const ushort u = p[i].unicode();
        if (u < 0x20 && u != '\t' && u != '\n' && u != '\r')
            return i;
    }
    return -1;
}

} // namespace

// Settings documents repeat a few names thousands of times: every element
// and attribute shares one copy of its name instead of holding its own.
const QString& CXmlDefaultHandler::intern(const QString& qsName)
{
    auto it = m_names.constFind(qsName);
    if (it == m_names.constEnd())
        it = m_names.insert(qsName, qsName);
    return it.value();
}

bool CXmlDefaultHandler::acceptText(const QString& qsText, const QString& qsWhat)
{
    const int at = controlCharAt(qsText);
    if (at < 0)
        return true;
    m_qsError = QStringLiteral("%1 holds the control character U+%2")
                    .arg(qsWhat).arg(qsText.at(at).unicode(), 4, 16, QLatin1Char('0'));
    return false;
}

bool CXmlDefaultHandler::startElement(const QString&, const QString&, const QString& qName,
                                      const QXmlAttributes& atts)
{
    if (m_nDepth >= nMaxDepth) {
        m_qsError = QStringLiteral("elements nested deeper than %1").arg(int(nMaxDepth));
        return false;
    }
    const QString name = intern(XmlWriter::decodeName(qName));
    CXmlTagV2* tag;
    if (m_current) {
        // Text between children is only layout.
        m_current->valueRef().clear();
        tag = m_current->addTagNode(name);
    } else {
        tag = new CXmlTagV2(name);
        m_top.append(tag);
    }
    if (m_lpLocator)
        tag->setLine(m_lpLocator->lineNumber());
    const int n = atts.count();
    if (n > 0) {
        tag->attributesRef().reserve(n);
        for (int i = 0; i < n; ++i) {
            if (controlCharAt(atts.value(i)) >= 0
                && !acceptText(atts.value(i), QStringLiteral("attribute \"%1\" of \"%2\"").arg(atts.qName(i), qName)))
                return false;
            tag->addTagValue(intern(XmlWriter::decodeName(atts.qName(i))), decodeValue(atts.value(i)));
        }
        tag->setKind(CXmlTagV2::KindAttributes);
    }
    m_current = tag;
    m_bSawElement = true;
    ++m_nDepth;
    return true;
}

bool CXmlDefaultHandler::endElement(const QString&, const QString&, const QString&)
{
    if (!m_current)
        return false;
    if (controlCharAt(m_current->value()) >= 0
        && !acceptText(m_current->value(), QStringLiteral("the text of \"%1\"").arg(m_current->name())))
        return false;
    if (!m_current->value().isEmpty())
        m_current->setValue(decodeValue(m_current->value()));
    m_current = m_current->parent();
    --m_nDepth;
    return true;
}

bool CXmlDefaultHandler::characters(const QString& ch)
{
    if (m_current && m_current->children().isEmpty())
        m_current->valueRef() += ch;
    return true;
}

bool CXmlDefaultHandler::startDTD(const QString&, const QString&, const QString&)
{
    m_qsError = QStringLiteral("document type declarations are not accepted");
    return false;
}

bool CXmlDefaultHandler::comment(const QString&)
{
    ++m_nDropped;
    return true;
}

bool CXmlDefaultHandler::processingInstruction(const QString& target, const QString&)
{
    // The reader reports the XML declaration as one; the writer renews it.
    if (target.compare(QLatin1String("xml"), Qt::CaseInsensitive) != 0)
        ++m_nDropped;
    return true;
}

bool CXmlDefaultHandler::fatalError(const QXmlParseException& exception)
{
    if (m_qsError.isEmpty())
        m_qsError = QStringLiteral("line %1, column %2: %3")
                        .arg(exception.lineNumber())
                        .arg(exception.columnNumber())
                        .arg(exception.message());
    return false;
}

QString CXmlDefaultHandler::errorString() const
{
    return m_qsError;
}
