#ifndef XMLFASTREADER_H
#define XMLFASTREADER_H

// Reads the shape settings documents nearly always have (the one XmlWriter
// writes) straight from the bytes into a tag tree, several times faster than
// the SAX reader and without its per-event strings.
//
// It is not a second parser with rules of its own: whatever it is not sure
// the SAX reader and CXmlDefaultHandler would read in exactly one way
// (comments, processing instructions, DOCTYPE, CDATA, character references
// and other entities than the five predefined ones, names beyond ASCII or
// with ":", an attribute named twice, text beside markup errors, characters
// the reader refuses, any error at all) makes it decline, and the document
// is then read by the SAX reader, which accepts, refuses and reports it as
// always. Both build the same tree from what this reader accepts.

#include "store/xmlwriter.h"

#include <QByteArray>

class CFxXmListlTag;

namespace XmlFastReader {

// True when body (the document's bytes without a byte-order mark, in the
// encoding enc, free of control characters) was read into topTags; false
// when it must go to the SAX reader, topTags then left empty.
bool read(const QByteArray& body, const XmlWriter::Encoding& enc, CFxXmListlTag& topTags);

} // namespace XmlFastReader

#endif
