#include "store/cxmldefaulthandler.h"

#include "store/cfxxmlistltag.h"
#include "store/cxmltagv2.h"
#include "store/xmlwriter.h"

#include <QSet>

#include <algorithm>
#include <cstring>

QT_WARNING_DISABLE_DEPRECATED

CXmlDefaultHandler::CXmlDefaultHandler(CFxXmListlTag& topTags)
    : m_top(topTags)
{
}

QString CXmlDefaultHandler::decodeValue(const QString& qsValue)
{
    static const struct
    {
        QLatin1String from;
        QLatin1String to;
    } kSteps[] = {
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

// The first control character other than tab and line ends, unpaired
// surrogate, U+FFFE or U+FFFF, or -1.
int controlCharAt(const QString& qsText)
{
    const QChar* p = qsText.constData();
    for (int i = 0, n = qsText.size(); i < n; ++i) {
        const ushort u = p[i].unicode();
        if (u < 0x20 && u != '\t' && u != '\n' && u != '\r')
            return i;
        if (u < 0xD800)
            continue;
        if (p[i].isHighSurrogate() && i + 1 < n && p[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        if (p[i].isSurrogate() || u >= 0xFFFE)
            return i;
    }
    return -1;
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// The code of the character reference at body[at] ("&#...;"), its length
// in n; -1 when it is malformed (the reader reports that), beyond U+10FFFF
// counted as 0x110000.
qint64 referenceAt(const QByteArray& body, int at, int& n)
{
    const int size = body.size();
    int i = at + 2;
    const bool hex = i < size && body.at(i) == 'x';
    if (hex)
        ++i;
    const int first = i;
    qint64 code = 0;
    for (; i < size; ++i) {
        const int d = hex ? hexDigit(body.at(i)) : (body.at(i) >= '0' && body.at(i) <= '9' ? body.at(i) - '0' : -1);
        if (d < 0)
            break;
        code = qMin<qint64>(code * (hex ? 16 : 10) + d, 0x110000);
    }
    if (i == first || i >= size || body.at(i) != ';')
        return -1;
    n = i + 1 - at;
    return code;
}

// Where the markup that starts at body[at] ("<") ends when it is a comment,
// CDATA section or processing instruction; at itself for anything else.
int skipLiteral(const QByteArray& body, int at)
{
    static const struct
    {
        const char* open;
        const char* close;
    } kLiterals[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (const auto& l : kLiterals) {
        if (body.indexOf(l.open, at) != at)
            continue;
        const int end = body.indexOf(l.close, at + int(std::strlen(l.open)));
        return end < 0 ? body.size() : end + int(std::strlen(l.close));
    }
    return at;
}

QString referenceError(const QByteArray& body, int at, int n)
{
    const QByteArray before = body.left(at);
    const int line = before.count('\n') + 1;
    const int column = at - (before.lastIndexOf('\n') + 1) + 1;
    return QStringLiteral("line %1, column %2: the character reference %3 names no character")
        .arg(line)
        .arg(column)
        .arg(QString::fromLatin1(body.mid(at, n)));
}

} // namespace

bool CXmlDefaultHandler::prepareReferences(QByteArray& body, QString& error)
{
    if (body.indexOf("&#") < 0)
        return true;
    QByteArray out;
    int copied = 0;
    for (int i = 0; i < body.size(); ++i) {
        const char c = body.at(i);
        if (c == '<') {
            const int end = skipLiteral(body, i);
            if (end > i && body.at(i + 1) == '!' && body.at(i + 2) != '-' && body.at(i + 2) != '[')
                break; // a DOCTYPE: refused by the reader
            i = qMax(i, end - 1);
            continue;
        }
        if (c != '&' || i + 1 >= body.size() || body.at(i + 1) != '#')
            continue;
        int n = 0;
        const qint64 code = referenceAt(body, i, n);
        if (code < 0)
            continue;
        if ((code >= 0xD800 && code < 0xE000) || code == 0xFFFE || code == 0xFFFF || code > 0x10FFFF) {
            error = referenceError(body, i, n);
            return false;
        }
        if (code <= 0xFFFF)
            continue;
        out.append(body.constData() + copied, i - copied);
        out += QStringLiteral("&#x%1;&#x%2;")
                   .arg(QChar::highSurrogate(uint(code)), 0, 16)
                   .arg(QChar::lowSurrogate(uint(code)), 0, 16)
                   .toLatin1();
        copied = i + n;
        i += n - 1;
    }
    if (copied > 0) {
        out.append(body.constData() + copied, body.size() - copied);
        body = std::move(out);
    }
    return true;
}

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
    const ushort u = qsText.at(at).unicode();
    m_qsError = QStringLiteral("%1 holds %2 U+%3")
                    .arg(qsWhat,
                        u < 0x20 ? QStringLiteral("the control character") : QStringLiteral("the non-character"))
                    .arg(u, 4, 16, QLatin1Char('0'));
    return false;
}

bool CXmlDefaultHandler::startElement(const QString&, const QString&, const QString& qName, const QXmlAttributes& atts)
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
        // Two names may differ in the file and not once decoded ("ч", "_1095_").
        QSet<QString> seen;
        for (int i = 0; i < n; ++i) {
            if (controlCharAt(atts.value(i)) >= 0
                && !acceptText(atts.value(i), QStringLiteral("attribute \"%1\" of \"%2\"").arg(atts.qName(i), qName)))
                return false;
            const QString& attribute = intern(XmlWriter::decodeName(atts.qName(i)));
            if (n <= 16 ? tag->attributeIndex(attribute) >= 0 : seen.contains(attribute)) {
                m_qsError = QStringLiteral("\"%1\" names the attribute \"%2\" twice").arg(qName, attribute);
                return false;
            }
            tag->addTagValue(attribute, decodeValue(atts.value(i)));
            if (n > 16)
                seen.insert(attribute);
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
