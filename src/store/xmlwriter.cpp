#include "store/xmlwriter.h"

#include "store/cxmldefaulthandler.h"
#include "store/cxmltagv2.h"
#include "module/zor_cp1251.h"

#include <QSet>
#include <QTextCodec>

#include <array>
#include <limits>
#include <vector>

namespace {

// The characters that names cannot hold as themselves, in the order in which
// they are replaced. Replacing one never introduces another, so a single
// pass over the name gives the same result as replacing them one by one.
const char16_t kNameChars[] = {
    u' ',
    u'&',
    u'>',
    u'<',
    u'"',
    u'\'',
    u'!',
    u':',
    u';',
    u'%',
    u'`',
    u'~',
    u'@',
    u'#',
    u'$',
    u'^',
    u'*',
    u'(',
    u')',
    u'-',
    u'+',
    u'=',
    u'|',
    u'\\',
    u'ч',
    u'Ч',
    u',',
    u'/',
};

bool isNameChar(char16_t c)
{
    for (char16_t n : kNameChars)
        if (n == c)
            return true;
    return false;
}

// What the SAX reader accepts in a name: letters (and "_") may begin one,
// digits, marks, "." and "-" may follow.
enum NameClass { NotName, NameStart, NameFollow };

NameClass nameClass(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 128) {
        if ((u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || u == '_' || u == ':')
            return NameStart;
        if ((u >= '0' && u <= '9') || u == '.' || u == '-')
            return NameFollow;
        return NotName;
    }
    const QChar::Category cat = c.category();
    if ((cat >= QChar::Letter_Uppercase && cat <= QChar::Letter_Other) || cat == QChar::Number_Letter)
        return NameStart;
    if ((cat >= QChar::Number_DecimalDigit && cat <= QChar::Number_Other)
        || (cat >= QChar::Mark_NonSpacing && cat <= QChar::Mark_Enclosing))
        return NameFollow;
    return NotName;
}

// Byte-level tables for the hot loop of the writer.
struct Tables
{
    std::array<bool, 128> nameEscape{};
    std::array<const char*, 128> attrEscape{};
    std::array<const char*, 128> textEscape{};
    // The one-line text form keeps its text as it stands but for what would
    // end it or not come back.
    std::array<const char*, 128> lineEscape{};
    // Characters that need a closer look before a string is written.
    std::array<bool, 128> suspicious{};
    // nameClass of the ASCII characters; the escaped ones count as letters.
    std::array<quint8, 128> asciiName{};
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
        textEscape['\r'] = "&#13;";
        attrEscape = textEscape;
        lineEscape['&'] = "&amp;";
        lineEscape['<'] = "&lt;";
        lineEscape['\r'] = "&#13;";
        attrEscape['\t'] = "&#9;";
        attrEscape['\n'] = "&#10;";
        for (int c = 0; c < 0x20; ++c)
            suspicious[c] = c != '\t' && c != '\n';
        suspicious['&'] = suspicious['_'] = true;
        for (int c = 0; c < 128; ++c)
            asciiName[c] = quint8(nameEscape[c] ? NameStart : nameClass(QChar(c)));
    }
};

const Tables& tables()
{
    static const Tables t;
    return t;
}

// Nothing longer than this goes into one byte array.
const qint64 kMaxOutput = std::numeric_limits<int>::max() - 4096;
// Worst growth of one character: "&quot;", "_1095_".
const qint64 kWorstPerChar = 6;

QString charName(QChar c)
{
    const QString code = QStringLiteral("U+%1").arg(c.unicode(), 4, 16, QLatin1Char('0')).toUpper();
    return c.unicode() < 0x20 || c.unicode() == 0x7f ? code : QStringLiteral("\"%1\" (%2)").arg(c, code);
}

class Writer
{
public:
    Writer(const XmlWriter::Encoding& encoding, QByteArray& out, QString* error)
        : m_enc(encoding)
        , m_out(out)
        , m_error(error)
        , m_utf8(encoding.codec && encoding.isUtf8())
    {
    }

    bool run(const CFxXmListlTag& topTags);
    // A name held a character past ASCII: its classes come from the
    // character tables, which the reader may see differently.
    bool nameBeyondAscii() const { return m_bNameBeyondAscii; }

private:
    bool fail(const CXmlTagV2* tag, const QString* attribute, const QString& what)
    {
        if (m_error) {
            QString where = QStringLiteral("element \"%1\"").arg(XmlWriter::pathOf(tag));
            if (attribute)
                where += QStringLiteral(", attribute \"%1\"").arg(*attribute);
            *m_error = QStringLiteral("%1: %2").arg(where, what);
        }
        return false;
    }
    bool reserve(const CXmlTagV2* tag, qint64 nChars)
    {
        // The slack covers the indentation (at most nMaxDepth * 4) and markup.
        if (qint64(m_out.size()) + 2048 + nChars * kWorstPerChar <= kMaxOutput)
            return true;
        if (m_error)
            *m_error = QStringLiteral("the document is too large to save (over 2 GiB) at element \"%1\"")
                           .arg(XmlWriter::pathOf(tag));
        return false;
    }
    bool checkName(const QString& name, const CXmlTagV2* tag, const QString* attribute);
    bool checkText(const QString& text, const CXmlTagV2* tag, const QString* attribute);
    bool distinctAttributes(const CXmlTagV2* tag);
    bool openTag(const CXmlTagV2* tag, int level, bool& leaf);
    void appendName(const QString& name);
    void appendText(const QString& text, const std::array<const char*, 128>& escapes, bool guardCdataEnd);
    void appendWide(const QChar* p, int& i, int n, char*& dst);

    const XmlWriter::Encoding& m_enc;
    QByteArray& m_out;
    QString* m_error;
    bool m_utf8;
    bool m_bNameBeyondAscii = false;
};

// Cursor over the output grown for the worst case of one string and cut
// back afterwards: appending byte by byte through QByteArray costs more
// than the whole encoding.
class Sink
{
public:
    Sink(QByteArray& out, int worstCase)
        : m_out(out)
    {
        const int start = out.size();
        out.resize(start + worstCase);
        m_p = out.data() + start;
    }
    ~Sink() { m_out.resize(int(m_p - m_out.constData())); }
    char*& p() { return m_p; }
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
    char* m_p;
};

void Writer::appendWide(const QChar* p, int& i, int n, char*& dst)
{
    if (!m_enc.codec) {
        *dst++ = ZOR_Cp1251::encodeAt(p, i, n);
        return;
    }
    if (m_utf8) {
        const char32_t c = p[i].unicode();
        if (p[i].isHighSurrogate() && i + 1 < n && p[i + 1].isLowSurrogate()) {
            const char32_t u = QChar::surrogateToUcs4(p[i], p[i + 1]);
            ++i;
            *dst++ = char(0xF0 | (u >> 18));
            *dst++ = char(0x80 | ((u >> 12) & 0x3F));
            *dst++ = char(0x80 | ((u >> 6) & 0x3F));
            *dst++ = char(0x80 | (u & 0x3F));
        } else if (c < 0x800) {
            *dst++ = char(0xC0 | (c >> 6));
            *dst++ = char(0x80 | (c & 0x3F));
        } else {
            *dst++ = char(0xE0 | (c >> 12));
            *dst++ = char(0x80 | ((c >> 6) & 0x3F));
            *dst++ = char(0x80 | (c & 0x3F));
        }
        return;
    }
    const int count = p[i].isHighSurrogate() && i + 1 < n ? 2 : 1;
    const QByteArray bytes = m_enc.codec->fromUnicode(p + i, count);
    i += count - 1;
    for (const char b : bytes.left(4))
        *dst++ = b;
}

void Writer::appendName(const QString& name)
{
    const Tables& t = tables();
    Sink sink(m_out, name.size() * int(kWorstPerChar));
    const QChar* p = name.constData();
    const int n = name.size();
    for (int i = 0; i < n; ++i) {
        const char16_t c = p[i].unicode();
        if (c < 128) {
            if (t.nameEscape[c])
                sink.putCode(c);
            else
                sink.put(char(c));
        } else if (c == u'ч' || c == u'Ч') {
            sink.putCode(c);
        } else {
            appendWide(p, i, n, sink.p());
        }
    }
}

void Writer::appendText(const QString& text, const std::array<const char*, 128>& escapes, bool guardCdataEnd)
{
    const QChar* p = text.constData();
    const int n = text.size();
    Sink sink(m_out, n * int(kWorstPerChar));
    for (int i = 0; i < n; ++i) {
        const char16_t c = p[i].unicode();
        if (c >= 128)
            appendWide(p, i, n, sink.p());
        else if (escapes[c])
            sink.put(escapes[c]);
        else if (guardCdataEnd && c == '>' && i >= 2 && p[i - 1] == QLatin1Char(']') && p[i - 2] == QLatin1Char(']'))
            sink.put("&gt;");
        else
            sink.put(char(c));
    }
}

bool Writer::checkName(const QString& name, const CXmlTagV2* tag, const QString* attribute)
{
    if (name.isEmpty())
        return fail(tag, attribute, QStringLiteral("an element or attribute needs a name"));
    const QString stored = XmlWriter::storedText(name, m_enc);
    const Tables& t = tables();
    bool first = true;
    for (const QChar c : stored) {
        const char16_t u = c.unicode();
        if (u < 128 && (t.asciiName[u] == NameStart || (!first && t.asciiName[u] == NameFollow))) {
            first = false;
            continue;
        }
        if (isNameChar(u)) {
            first = false;
            continue;
        }
        m_bNameBeyondAscii = true;
        const NameClass cls = nameClass(c);
        if (cls == NotName || (first && cls != NameStart))
            return fail(tag, attribute,
                QStringLiteral("the name \"%1\" cannot %2 the character %3")
                    .arg(name, first ? QStringLiteral("begin with") : QStringLiteral("hold"), charName(c)));
        first = false;
    }
    if (stored.contains(QLatin1Char('_'))) {
        QString encoded;
        for (const QChar c : stored)
            encoded += isNameChar(c.unicode()) ? QStringLiteral("_%1_").arg(c.unicode()) : QString(c);
        const QString back = XmlWriter::decodeName(encoded);
        if (back != stored) {
            for (int i = 0; i < stored.size(); ++i)
                if (back.size() <= i || back.at(i) != stored.at(i))
                    return fail(tag, attribute,
                        QStringLiteral("the name \"%1\" holds \"%2\", which reads back as \"%3\"")
                            .arg(name, stored.mid(i, stored.indexOf(QLatin1Char('_'), i + 1) - i + 1), back.at(i)));
        }
    }
    return true;
}

bool Writer::checkText(const QString& text, const CXmlTagV2* tag, const QString* attribute)
{
    const Tables& t = tables();
    bool closer = false;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u < 128) {
            if (t.suspicious[u] && u != '\r') {
                if (u < 0x20)
                    return fail(
                        tag, attribute, QStringLiteral("the control character %1 cannot be stored").arg(charName(c)));
                closer = true;
            }
        } else if (m_enc.codec) {
            if (u == 0xFFFE || u == 0xFFFF || (c.isSurrogate() && !m_utf8))
                return fail(tag, attribute, QStringLiteral("the character %1 cannot be stored").arg(charName(c)));
        }
    }
    if (m_enc.codec) {
        const QChar* p = text.constData();
        for (int i = 0; i < text.size(); ++i) {
            if (p[i].isHighSurrogate() && i + 1 < text.size() && p[i + 1].isLowSurrogate()) {
                ++i;
                continue;
            }
            if (p[i].isSurrogate() || (!m_utf8 && p[i].unicode() >= 128 && !m_enc.codec->canEncode(p[i])))
                return fail(tag, attribute,
                    QStringLiteral("the character %1 has no code in %2")
                        .arg(charName(p[i]), QString::fromLatin1(m_enc.name)));
        }
    }
    if (!closer)
        return true;
    // The reader decodes a few escapes once more after the XML entities; a
    // value holding one of them would not come back as it was. (Every
    // escape it decodes begins with one of these.)
    static const QLatin1String kDecodedAgain[] = {QLatin1String("&nbsp;"), QLatin1String("&amp;"),
        QLatin1String("&gt;"), QLatin1String("&lt;"), QLatin1String("&quot;"), QLatin1String("&apos;"),
        QLatin1String("_33_")};
    const QString stored = XmlWriter::storedText(text, m_enc);
    const QChar* p = stored.constData();
    const int n = stored.size();
    for (int i = 0; i < n; ++i) {
        if (p[i] != QLatin1Char('&') && p[i] != QLatin1Char('_'))
            continue;
        const QStringView rest = QStringView(p + i, n - i);
        for (const QLatin1String& escape : kDecodedAgain)
            if (rest.startsWith(escape))
                return fail(tag, attribute,
                    QStringLiteral("the text \"%1\" would be read back as \"%2\"")
                        .arg(escape, CXmlDefaultHandler::decodeValue(escape)));
    }
    return true;
}

// A reader refuses an element that names an attribute twice.
bool Writer::distinctAttributes(const CXmlTagV2* tag)
{
    const QVector<CXmlAttribute>& attributes = tag->attributes();
    const int n = attributes.size();
    if (n < 2)
        return true;
    const auto twice = [&](int i) {
        return fail(tag, &attributes.at(i).name, QStringLiteral("the element has two attributes of this name"));
    };
    if (n <= 16) {
        QString stored[16];
        for (int i = 0; i < n; ++i) {
            stored[i] = XmlWriter::storedText(attributes.at(i).name, m_enc);
            for (int j = 0; j < i; ++j)
                if (stored[i] == stored[j])
                    return twice(i);
        }
        return true;
    }
    QSet<QString> seen;
    seen.reserve(n);
    for (int i = 0; i < n; ++i) {
        const QString name = XmlWriter::storedText(attributes.at(i).name, m_enc);
        if (seen.contains(name))
            return twice(i);
        seen.insert(name);
    }
    return true;
}

// Writes the opening tag; a tag without children is closed at once (leaf).
bool Writer::openTag(const CXmlTagV2* tag, int level, bool& leaf)
{
    const Tables& t = tables();
    if (level >= XmlWriter::nMaxDepth)
        return fail(tag, nullptr,
            QStringLiteral("elements nested deeper than %1 are not saved").arg(int(XmlWriter::nMaxDepth)));
    const CFxXmListlTag& children = tag->children();
    if (!tag->value().isEmpty() && !children.isEmpty())
        return fail(tag, nullptr, QStringLiteral("holds both text and child elements; the text would be lost"));
    if (!reserve(tag, tag->name().size() * 2 + tag->value().size()) || !checkName(tag->name(), tag, nullptr)
        || !checkText(tag->value(), tag, nullptr))
        return false;
    m_out.append(level * 4, ' ');
    m_out += '<';
    appendName(tag->name());
    leaf = children.isEmpty();
    // The one-line form holds the text alone; with attributes or children
    // the element is written like any other so nothing is dropped.
    const bool oneLine = tag->kind() == CXmlTagV2::KindText && tag->attributes().isEmpty() && leaf;
    if (!oneLine) {
        if (!distinctAttributes(tag))
            return false;
        for (const CXmlAttribute& a : tag->attributes()) {
            if (!reserve(tag, a.name.size() + a.value.size()) || !checkName(a.name, tag, &a.name)
                || !checkText(a.value, tag, &a.name))
                return false;
            m_out += ' ';
            appendName(a.name);
            m_out += "=\"";
            appendText(a.value, t.attrEscape, false);
            m_out += '"';
        }
    }
    if (!leaf) {
        m_out += ">\n";
        return true;
    }
    if (tag->value().isEmpty()) {
        m_out += " />\n";
        return true;
    }
    m_out += '>';
    appendText(tag->value(), oneLine ? t.lineEscape : t.textEscape, oneLine);
    m_out += "</";
    appendName(tag->name());
    m_out += ">\n";
    return true;
}

bool Writer::run(const CFxXmListlTag& topTags)
{
    if (m_enc.bom)
        m_out += "\xEF\xBB\xBF";
    m_out += "<?xml version=\"1.0\" encoding=\"";
    m_out += m_enc.name;
    m_out += "\"?>\n";
    struct Frame
    {
        const CXmlTagV2* tag;
        int next;
    };
    std::vector<Frame> stack;
    if (topTags.count() > 1)
        return fail(topTags.getNumTag(1), nullptr,
            QStringLiteral("a document holds one top-level element; a second one would not read back"));
    for (int top = 0; top < topTags.count(); ++top) {
        stack.push_back(Frame{topTags.getNumTag(top), -1});
        while (!stack.empty()) {
            const int level = int(stack.size()) - 1;
            Frame& f = stack.back();
            if (f.next < 0) {
                bool leaf = false;
                if (!openTag(f.tag, level, leaf))
                    return false;
                if (leaf) {
                    stack.pop_back();
                    continue;
                }
                f.next = 0;
            }
            if (f.next < f.tag->children().count()) {
                const CXmlTagV2* child = f.tag->children().getNumTag(f.next++);
                stack.push_back(Frame{child, -1});
                continue;
            }
            if (!reserve(f.tag, f.tag->name().size()))
                return false;
            m_out.append(level * 4, ' ');
            m_out += "</";
            appendName(f.tag->name());
            m_out += ">\n";
            stack.pop_back();
        }
    }
    return true;
}

} // namespace

bool XmlWriter::Encoding::isUtf8() const
{
    return codec && codec->mibEnum() == 106;
}

QString XmlWriter::storedText(const QString& qsText, const Encoding& encoding)
{
    if (encoding.codec)
        return qsText;
    for (const QChar c : qsText) {
        if (c.unicode() >= 128 && !ZOR_Cp1251::canEncode(c))
            return ZOR_Cp1251::decode(ZOR_Cp1251::encode(qsText));
    }
    return qsText;
}

QString XmlWriter::pathOf(const CXmlTagV2* tag)
{
    // A deep path is shortened to its top and the three names nearest the
    // element.
    const int kNear = 3;
    QStringList names;
    const CXmlTagV2* top = tag;
    int depth = 0;
    for (const CXmlTagV2* t = tag; t; t = t->parent(), ++depth) {
        if (depth < kNear + 2)
            names.prepend(t->name());
        top = t;
    }
    if (depth <= kNear + 2)
        return names.join(QLatin1Char('/'));
    return QStringLiteral("%1/.../%2 (%3 levels)")
        .arg(top->name(), names.mid(names.size() - kNear).join(QLatin1Char('/')))
        .arg(depth);
}

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
    render(topTags, Encoding(), out, nullptr);
    return out;
}

bool XmlWriter::render(
    const CFxXmListlTag& topTags, const Encoding& encoding, QByteArray& out, QString* error, bool* lpReadBack)
{
    out.clear();
    out.reserve(4096);
    Writer writer(encoding, out, error);
    const bool ok = writer.run(topTags);
    if (lpReadBack)
        *lpReadBack = writer.nameBeyondAscii();
    return ok;
}
