#include "store/xmlfastreader.h"

#include "store/cfxxmlistltag.h"
#include "store/cxmldefaulthandler.h"
#include "store/cxmltagv2.h"
#include "module/zor_cp1251.h"

#include <QHash>
#include <QString>

#include <cstring>
#include <vector>

namespace {

enum : quint8 {
    Space = 1, // white space between markup
    NameStart = 2, // may begin a name (ASCII only: others are declined)
    NameFollow = 4, // may follow in a name
    TextStop = 8, // ends a plain run of text: markup, entities, "]]>", bytes past ASCII
    AttrStop = 16, // the same in an attribute value (quotes are checked apart)
};

struct Classes
{
    quint8 c[256] = {};
    Classes()
    {
        for (const char s : {' ', '\t', '\n', '\r'})
            c[quint8(s)] |= Space;
        for (int i = 0; i < 256; ++i) {
            const bool letter = (i >= 'a' && i <= 'z') || (i >= 'A' && i <= 'Z') || i == '_';
            if (letter)
                c[i] |= NameStart | NameFollow;
            if ((i >= '0' && i <= '9') || i == '.' || i == '-')
                c[i] |= NameFollow;
            if (i >= 0x80)
                c[i] |= TextStop | AttrStop;
        }
        for (const char s : {'<', '&', ']'})
            c[quint8(s)] |= TextStop;
        for (const char s : {'<', '&', '"', '\''})
            c[quint8(s)] |= AttrStop;
    }
};

const Classes kClasses;

inline bool is(char c, quint8 cls)
{
    return kClasses.c[quint8(c)] & cls;
}

class Reader
{
public:
    Reader(const QByteArray& body, const XmlWriter::Encoding& enc, CFxXmListlTag& top)
        : m_p(body.constData())
        , m_end(body.constData() + body.size())
        , m_utf8(enc.codec != nullptr)
        , m_top(top)
        , m_lineAt(m_p)
    {
    }
    bool run();

private:
    struct Open
    {
        CXmlTagV2* tag;
        const char* name;
        int nameLength;
    };
    struct Attribute
    {
        const char* name;
        int nameLength;
        QString value;
    };

    void skipSpace()
    {
        while (m_p < m_end && is(*m_p, Space))
            ++m_p;
    }
    bool declaration();
    bool name(const char*& start, int& length);
    bool character();
    bool entity(QByteArray* out);
    bool attributeValue(QString& value);
    bool content();
    bool startTag();
    bool endTag();
    QString text(const char* bytes, int n, bool ascii) const;
    const QString& internName(const char* start, int length);
    // The line m_p is on, counted on from where the last call left off.
    int line()
    {
        for (const char* nl; (nl = static_cast<const char*>(std::memchr(m_lineAt, '\n', size_t(m_p - m_lineAt))));) {
            ++m_line;
            m_lineAt = nl + 1;
        }
        return m_line;
    }

    const char* m_p;
    const char* const m_end;
    const bool m_utf8;
    CFxXmListlTag& m_top;
    const char* m_lineAt;
    int m_line = 1;
    std::vector<Open> m_stack;
    std::vector<Attribute> m_attributes;
    QHash<QByteArray, QString> m_names;
    // Short values repeat ("0", "1", type codes): one copy of each of the
    // first few thousand is shared instead of a string per attribute.
    QHash<QByteArray, QString> m_values;
    // The text of the innermost element while it has no child (the only
    // text the tree keeps), and a scratch buffer for attribute values.
    QByteArray m_text;
    bool m_textAscii = true;
    QByteArray m_value;
};

// The exact declarations the writer writes; any other is the SAX reader's.
bool Reader::declaration()
{
    static const char kStart[] = "<?xml version=\"1.0\"";
    const int n = int(sizeof kStart) - 1;
    if (m_end - m_p < n || std::memcmp(m_p, kStart, size_t(n)) != 0)
        return false;
    m_p += n;
    static const char kEncoding[] = " encoding=\"";
    const int e = int(sizeof kEncoding) - 1;
    if (m_end - m_p > e && std::memcmp(m_p, kEncoding, size_t(e)) == 0) {
        m_p += e;
        if (m_p >= m_end || !((*m_p >= 'a' && *m_p <= 'z') || (*m_p >= 'A' && *m_p <= 'Z')))
            return false;
        while (m_p < m_end && (is(*m_p, NameFollow) && *m_p != '_'))
            ++m_p;
        if (m_p >= m_end || *m_p++ != '"')
            return false;
    }
    if (m_end - m_p < 2 || m_p[0] != '?' || m_p[1] != '>')
        return false;
    m_p += 2;
    return true;
}

bool Reader::name(const char*& start, int& length)
{
    if (m_p >= m_end || !is(*m_p, NameStart))
        return false;
    start = m_p++;
    while (m_p < m_end && is(*m_p, NameFollow))
        ++m_p;
    length = int(m_p - start);
    // Namespace declarations and prefixed names are the SAX reader's.
    return m_p < m_end && *m_p != ':' && !(length >= 5 && std::memcmp(start, "xmlns", 5) == 0);
}

// One character past ASCII, checked the way the reader's decoding would
// take it; anything the reader might refuse or read otherwise is declined.
bool Reader::character()
{
    if (!m_utf8) {
        ++m_p;
        return true;
    }
    const auto* p = reinterpret_cast<const unsigned char*>(m_p);
    const unsigned char c = p[0];
    const auto follow = [&](int i) { return m_end - m_p > i && (p[i] & 0xC0) == 0x80; };
    if (c >= 0xC2 && c <= 0xDF && follow(1)) {
        m_p += 2;
        return true;
    }
    if (c >= 0xE0 && c <= 0xEF && follow(1) && follow(2)) {
        const unsigned u = unsigned(c & 0x0F) << 12 | unsigned(p[1] & 0x3F) << 6 | unsigned(p[2] & 0x3F);
        if (u < 0x800 || (u >= 0xD800 && u < 0xE000) || (u >= 0xFDD0 && u <= 0xFDEF) || u == 0xFEFF || u >= 0xFFFE)
            return false;
        m_p += 3;
        return true;
    }
    return false;
}

// One of the five predefined entities, appended to out as its character.
bool Reader::entity(QByteArray* out)
{
    static const struct
    {
        const char* text;
        int length;
        char c;
    } kEntities[] = {{"&amp;", 5, '&'}, {"&lt;", 4, '<'}, {"&gt;", 4, '>'}, {"&quot;", 6, '"'}, {"&apos;", 6, '\''}};
    for (const auto& e : kEntities) {
        if (m_end - m_p >= e.length && std::memcmp(m_p, e.text, size_t(e.length)) == 0) {
            m_p += e.length;
            if (out)
                *out += e.c;
            return true;
        }
    }
    return false;
}

QString Reader::text(const char* bytes, int n, bool ascii) const
{
    if (ascii)
        return QString::fromLatin1(bytes, n);
    return m_utf8 ? QString::fromUtf8(bytes, n) : ZOR_Cp1251::decode(bytes, n);
}

const QString& Reader::internName(const char* start, int length)
{
    const QByteArray key = QByteArray::fromRawData(start, length);
    auto it = m_names.constFind(key);
    if (it == m_names.constEnd())
        it = m_names.insert(QByteArray(start, length), XmlWriter::decodeName(QString::fromLatin1(start, length)));
    return it.value();
}

bool Reader::attributeValue(QString& value)
{
    const char quote = *m_p++;
    const char* start = m_p;
    bool ascii = true;
    bool plain = true;
    for (;;) {
        while (m_p < m_end && !is(*m_p, AttrStop))
            ++m_p;
        if (m_p >= m_end)
            return false;
        const char c = *m_p;
        if (c == quote)
            break;
        if (c == '"' || c == '\'') {
            ++m_p;
        } else if (c == '&') {
            if (plain) {
                m_value.clear();
                plain = false;
            }
            m_value.append(start, int(m_p - start));
            if (!entity(&m_value))
                return false;
            start = m_p;
        } else if (c == '<') {
            return false;
        } else {
            ascii = false;
            if (!character())
                return false;
        }
    }
    if (!plain) {
        m_value.append(start, int(m_p - start));
        start = m_value.constData();
    }
    const int n = plain ? int(m_p - start) : m_value.size();
    ++m_p;
    const int kShort = 12;
    const int kShared = 4096;
    if (n > kShort) {
        value = CXmlDefaultHandler::decodeValue(text(start, n, ascii));
        return true;
    }
    const QByteArray key = QByteArray::fromRawData(start, n);
    const auto it = m_values.constFind(key);
    if (it != m_values.constEnd()) {
        value = it.value();
        return true;
    }
    value = CXmlDefaultHandler::decodeValue(text(start, n, ascii));
    if (m_values.size() < kShared)
        m_values.insert(QByteArray(start, n), value);
    return true;
}

// Character data up to the next "<": kept while the innermost element has
// no child, otherwise only checked.
bool Reader::content()
{
    CXmlTagV2* tag = m_stack.back().tag;
    const bool keep = tag->children().isEmpty();
    const char* start = m_p;
    for (;;) {
        while (m_p < m_end && !is(*m_p, TextStop))
            ++m_p;
        if (m_p >= m_end)
            return false;
        const char c = *m_p;
        if (c == '<')
            break;
        if (c == '&') {
            if (keep)
                m_text.append(start, int(m_p - start));
            if (!entity(keep ? &m_text : nullptr))
                return false;
            start = m_p;
        } else if (c == ']') {
            if (m_end - m_p >= 3 && m_p[1] == ']' && m_p[2] == '>')
                return false;
            ++m_p;
        } else {
            m_textAscii = false;
            if (!character())
                return false;
        }
    }
    if (keep)
        m_text.append(start, int(m_p - start));
    return true;
}

bool Reader::startTag()
{
    const int nLine = line();
    ++m_p; // "<"
    const char* tagName = nullptr;
    int tagLength = 0;
    if (!name(tagName, tagLength) || m_stack.size() >= size_t(XmlWriter::nMaxDepth))
        return false;
    m_attributes.clear();
    bool empty = false;
    for (;;) {
        const char* before = m_p;
        skipSpace();
        if (m_p >= m_end)
            return false;
        if (*m_p == '>') {
            ++m_p;
            break;
        }
        if (*m_p == '/') {
            if (m_end - m_p < 2 || m_p[1] != '>')
                return false;
            m_p += 2;
            empty = true;
            break;
        }
        Attribute a;
        if (m_p == before || !name(a.name, a.nameLength))
            return false;
        skipSpace();
        if (m_p >= m_end || *m_p++ != '=')
            return false;
        skipSpace();
        if (m_p >= m_end || (*m_p != '"' && *m_p != '\'') || !attributeValue(a.value))
            return false;
        for (const Attribute& other : m_attributes)
            if (other.nameLength == a.nameLength && std::memcmp(other.name, a.name, size_t(a.nameLength)) == 0)
                return false;
        if (m_attributes.size() >= 64)
            return false;
        m_attributes.push_back(std::move(a));
    }
    const QString& qsName = internName(tagName, tagLength);
    CXmlTagV2* tag;
    if (m_stack.empty()) {
        tag = new CXmlTagV2(qsName);
        m_top.append(tag);
    } else {
        tag = m_stack.back().tag->addTagNode(qsName);
    }
    tag->setLine(nLine);
    if (!m_attributes.empty()) {
        QVector<CXmlAttribute>& list = tag->attributesRef();
        list.reserve(int(m_attributes.size()));
        for (Attribute& a : m_attributes)
            list.append(CXmlAttribute{internName(a.name, a.nameLength), std::move(a.value)});
        tag->setKind(CXmlTagV2::KindAttributes);
    }
    m_text.clear();
    m_textAscii = true;
    if (!empty)
        m_stack.push_back(Open{tag, tagName, tagLength});
    return true;
}

bool Reader::endTag()
{
    m_p += 2; // "</"
    const Open& open = m_stack.back();
    if (m_end - m_p < open.nameLength || std::memcmp(m_p, open.name, size_t(open.nameLength)) != 0)
        return false;
    m_p += open.nameLength;
    if (m_p < m_end && is(*m_p, NameFollow))
        return false;
    skipSpace();
    if (m_p >= m_end || *m_p++ != '>')
        return false;
    if (open.tag->children().isEmpty() && !m_text.isEmpty())
        open.tag->setValue(CXmlDefaultHandler::decodeValue(text(m_text.constData(), m_text.size(), m_textAscii)));
    m_text.clear();
    m_textAscii = true;
    m_stack.pop_back();
    return true;
}

bool Reader::run()
{
    if (m_end - m_p >= 5 && std::memcmp(m_p, "<?xml", 5) == 0 && !declaration())
        return false;
    skipSpace();
    if (m_p >= m_end || *m_p != '<' || !startTag())
        return false;
    while (!m_stack.empty()) {
        if (!content() || m_end - m_p < 2)
            return false;
        if (m_p[1] == '/') {
            if (!endTag())
                return false;
        } else if (is(m_p[1], NameStart)) {
            if (!startTag())
                return false;
        } else {
            return false;
        }
    }
    skipSpace();
    return m_p == m_end;
}

} // namespace

bool XmlFastReader::read(const QByteArray& body, const XmlWriter::Encoding& enc, CFxXmListlTag& topTags)
{
    if (enc.codec && !enc.isUtf8())
        return false;
    if (Reader(body, enc, topTags).run())
        return true;
    topTags.deleteAll();
    return false;
}
