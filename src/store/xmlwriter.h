#ifndef XMLWRITER_H
#define XMLWRITER_H

// Renders a settings document as bytes, and holds the name encoding that
// lets any text serve as an element or attribute name.
//
// Output rules:
//  - the first line is <?xml version="1.0" encoding="windows-1251"?> (or
//    the document's own encoding, see Encoding);
//  - every element is on a line of its own, indented four spaces per level;
//    an element with children gets an opening tag, its children and a
//    closing tag; one without children and text is written as <name ... />;
//  - a KindText element without attributes and children is one line
//    <name>text</name> (or <name /> when the text is empty), its text as it
//    stands except for the characters that would end the text or make the
//    file unreadable ("<", "&", CR and the ">" of "]]>");
//  - attributes are name="value" separated by single spaces; & < > " ' in
//    values (and in the text of other elements) are written as entities,
//    tab, line feed and carriage return in attribute values as character
//    references (a reader turns them into blanks otherwise);
//  - names: 28 characters are written as _N_ with N the decimal code (see
//    kNameChars in the .cpp; "ч" and "Ч" are among them, other Cyrillic
//    letters are not);
//  - every character goes through the Windows-1251 rule ("_" when absent).
// Lines end with a line feed.
//
// The checked render refuses, naming the element and the character, what
// no reader would give back as it was: names that are no XML names, control
// characters, values holding the escapes the reader decodes once more
// ("&gt;", "_33_" ...), text beside child elements, an attribute named
// twice, a second top-level element, nesting deeper than nMaxDepth and
// output beyond what a byte array holds.

#include <QByteArray>
#include <QString>

class CFxXmListlTag;
class CXmlTagV2;
class QTextCodec;

class XmlWriter
{
public:
    enum { nMaxDepth = 256 };

    // The text encoding of a document. Without a codec the module's own
    // Windows-1251 rule is used (characters it lacks become "_"); with one,
    // a character the codec cannot hold is refused.
    struct Encoding
    {
        QByteArray name = "windows-1251"; // as the declaration names it
        QTextCodec* codec = nullptr;
        bool bom = false; // a UTF-8 byte-order mark first
        bool isUtf8() const;
    };

    static QByteArray render(const CFxXmListlTag& topTags);
    // *lpReadBack (when given) tells whether the rendering holds what only
    // the reader itself can judge (names beyond ASCII), so that a caller
    // who must be sure reads it back.
    static bool render(const CFxXmListlTag& topTags, const Encoding& encoding, QByteArray& out, QString* error,
        bool* lpReadBack = nullptr);

    // The reverse of the name encoding: _N_ tokens of the 28 codes, read left
    // to right, become their characters.
    static QString decodeName(const QString& qsName);

    // The text as it comes back from a file in this encoding.
    static QString storedText(const QString& qsText, const Encoding& encoding);

    // "USRPRMS/SIM1RULES" for messages.
    static QString pathOf(const CXmlTagV2* tag);
};

#endif
