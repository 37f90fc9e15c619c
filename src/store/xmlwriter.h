#ifndef XMLWRITER_H
#define XMLWRITER_H

// Renders a settings document as Windows-1251 bytes, and holds the name
// encoding that lets any text serve as an element or attribute name.
//
// Output rules:
//  - the first line is <?xml version="1.0" encoding="windows-1251"?>;
//  - every element is on a line of its own, indented four spaces per level;
//    an element with children gets an opening tag, its children and a
//    closing tag; one without children and text is written as <name ... />;
//  - a KindText element is one line <name>text</name> (or <name /> when the
//    text is empty) with the text as it stands, not escaped, and without
//    attributes or children;
//  - attributes are name="value" separated by single spaces; & < > " ' in
//    values (and in the text of other elements) are written as entities;
//  - names: 28 characters are written as _N_ with N the decimal code (see
//    kNameChars in the .cpp; "ч" and "Ч" are among them, other Cyrillic
//    letters are not);
//  - every character goes through the Windows-1251 rule ("_" when absent).
// Lines end with a line feed.

#include <QByteArray>
#include <QString>

class CFxXmListlTag;
class CXmlTagV2;

class XmlWriter
{
public:
    static QByteArray render(const CFxXmListlTag& topTags);

    // The reverse of the name encoding: _N_ tokens of the 28 codes, read left
    // to right, become their characters.
    static QString decodeName(const QString& qsName);

private:
    static void writeTag(const CXmlTagV2* tag, int nLevel, QByteArray& out);
};

#endif
