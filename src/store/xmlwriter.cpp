#include "store/xmlwriter.h"

#include "store/cxmltagv2.h"
#include "module/zor_cp1251.h"

#include <array>

namespace {

// The characters that names cannot hold as themselves, in the order in which
// they are replaced. Replacing one never introduces another, so a single
// pass over the name gives the same result as replacing them one by one.
const char16_t kNameChars[] = {
    u' ', u'&', u'>', u'<', u'"', u'\'', u'!', u':', u';', u'%', u'`', u'~', u'@', u'#',
    u'$', u'^', u'*', u'(', u')', u'-', u'+', u'=', u'|', u'\\', u'ч', u'Ч', u',', u'/',
};

bool isNameChar(char16_t c)
{
    for (char16_t n : kNameChars)
        if (n == c)
            return true;
    return false;
}

// Byte-level tables for the hot loop of the writer.
struct Tables {
    std::array<bool, 128> nameEscape{};
    std::array<const char*, 128> textEscape{};
    Tables()
    {
        for (char16_t c : kNameChars)
            if (c < 128)
                nameEscape[c] = true;
        textEscape['&'] = "&amp;";
        textEscape['<'] = "&lt;";
        textEscape['>'] = "&gt;";
        textEscape['"'] = "&quot;";
        textEscape['\''] = "&apos;";
    }
};

const Tables& tables()
{
    static const Tables t;
    return t;
}

// The writer works on raw pointers into a buffer grown for the worst case
// of each string and cut back afterwards: appending byte by byte through
// QByteArray costs more than the whole encoding.
class Cursor
{
public:
    Cursor(QByteArray& out, int worstCase)
        : m_out(out)
        , m_start(out.size())
    {
        out.resize(m_start + worstCase);
        m_p = out.data() + m_start;
    }
    ~Cursor() { m_out.resize(int(m_p - m_out.constData())); }
    void put(char c) { *m_p++ = c; }
    void put(const char* s)
    {
        while (*s)
            *m_p++ = *s++;
    }
    void putCode(char16_t c)
    {
        char digits[8];
        int n = 0;
        for (unsigned v = c; v; v /= 10)
            digits[n++] = char('0' + v % 10);
        *m_p++ = '_';
        while (n)
            *m_p++ = digits[--n];
        *m_p++ = '_';
    }

private:
    QByteArray& m_out;
    int m_start;
    char* m_p;
};

void appendName(const QString& name, QByteArray& out)
{
    const Tables& t = tables();
    Cursor sink(out, name.size() * 6);   // "_1095_" is the longest code
    for (const QChar qc : name) {
        const char16_t c = qc.unicode();
        if (c < 128) {
            if (t.nameEscape[c])
                sink.putCode(c);
            else
                sink.put(char(c));
        } else if (c == u'ч' || c == u'Ч') {
            sink.putCode(c);
        } else {
            sink.put(ZOR_Cp1251::encodeChar(qc));
        }
    }
}

void appendText(const QString& text, bool escape, QByteArray& out)
{
    const Tables& t = tables();
    const QChar* p = text.constData();
    const int n = text.size();
    Cursor sink(out, n * 6);   // "&quot;" is the longest entity
    for (int i = 0; i < n; ++i) {
        const char16_t c = p[i].unicode();
        if (c < 128) {
            if (escape && t.textEscape[c])
                sink.put(t.textEscape[c]);
            else
                sink.put(char(c));
        } else {
            sink.put(ZOR_Cp1251::encodeChar(p[i]));
        }
    }
}

// ">text</name>" and the line end, or " />" when there is no text.
void appendTextAndClose(const QString& name, const QString& text, bool escape, QByteArray& out)
{
    if (text.isEmpty()) {
        out += " />\n";
        return;
    }
    out += '>';
    appendText(text, escape, out);
    out += "</";
    appendName(name, out);
    out += ">\n";
}

void appendIndent(int level, QByteArray& out)
{
    out.append(level * 4, ' ');
}

} // namespace

QString XmlWriter::decodeName(const QString& qsName)
{
    if (!qsName.contains(QLatin1Char('_')))
        return qsName;
    QString out;
    out.reserve(qsName.size());
    const int n = qsName.size();
    for (int i = 0; i < n; ++i) {
        const QChar c = qsName.at(i);
        if (c == QLatin1Char('_')) {
            int j = i + 1;
            int code = 0;
            while (j < n && j - i <= 4 && qsName.at(j).isDigit() && qsName.at(j).unicode() < 128) {
                code = code * 10 + (qsName.at(j).unicode() - '0');
                ++j;
            }
            if (j > i + 1 && j < n && qsName.at(j) == QLatin1Char('_') && isNameChar(char16_t(code))
                && QString::number(code) == qsName.mid(i + 1, j - i - 1)) {
                out += QChar(code);
                i = j;
                continue;
            }
        }
        out += c;
    }
    return out;
}

QByteArray XmlWriter::render(const CFxXmListlTag& topTags)
{
    QByteArray out;
    out.reserve(4096);
    out += "<?xml version=\"1.0\" encoding=\"windows-1251\"?>\n";
    for (int i = 0; i < topTags.count(); ++i)
        writeTag(topTags.getNumTag(i), 0, out);
    return out;
}

void XmlWriter::writeTag(const CXmlTagV2* tag, int nLevel, QByteArray& out)
{
    appendIndent(nLevel, out);
    out += '<';
    appendName(tag->name(), out);
    if (tag->kind() == CXmlTagV2::KindText) {
        appendTextAndClose(tag->name(), tag->value(), false, out);
        return;
    }
    for (const CXmlAttribute& a : tag->attributes()) {
        out += ' ';
        appendName(a.name, out);
        out += "=\"";
        appendText(a.value, true, out);
        out += '"';
    }
    const CFxXmListlTag& children = tag->children();
    if (children.isEmpty()) {
        appendTextAndClose(tag->name(), tag->value(), true, out);
        return;
    }
    out += ">\n";
    for (int i = 0; i < children.count(); ++i)
        writeTag(children.getNumTag(i), nLevel + 1, out);
    appendIndent(nLevel, out);
    out += "</";
    appendName(tag->name(), out);
    out += ">\n";
}
