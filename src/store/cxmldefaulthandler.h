#ifndef CXMLDEFAULTHANDLER_H
#define CXMLDEFAULTHANDLER_H

// Builds the tag tree of a settings document from the SAX reader's events.
// Names are decoded (XmlWriter::decodeName) and attribute values and text
// decoded once more (decodeValue). Documents with a DOCTYPE (and so any
// entity declaration) and documents nested deeper than nMaxDepth are
// refused: the reader's own recursion would overflow the stack long before
// it reports an error of its own. So are control characters that arrive
// through character references ("&#1;"): no save could write them back.
// Nor are references that name no character (surrogates, U+FFFE, U+FFFF,
// beyond U+10FFFF), unpaired surrogates and an attribute named twice.

#include "store/xmlwriter.h"

#include <QHash>
#include <QXmlDefaultHandler>

// The SAX reader is deprecated in favour of QXmlStreamReader, but it is the
// parser settings documents have always been read with.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

class CFxXmListlTag;
class CXmlTagV2;

class CXmlDefaultHandler : public QXmlDefaultHandler
{
public:
    enum { nMaxDepth = XmlWriter::nMaxDepth };

    explicit CXmlDefaultHandler(CFxXmListlTag& topTags);

    bool startElement(const QString& namespaceURI, const QString& localName, const QString& qName,
        const QXmlAttributes& atts) override;
    bool endElement(const QString& namespaceURI, const QString& localName, const QString& qName) override;
    bool characters(const QString& ch) override;
    void setDocumentLocator(QXmlLocator* lpLocator) override { m_lpLocator = lpLocator; }
    bool startDTD(const QString& name, const QString& publicId, const QString& systemId) override;
    bool comment(const QString& ch) override;
    bool processingInstruction(const QString& target, const QString& data) override;
    bool fatalError(const QXmlParseException& exception) override;
    QString errorString() const override;

    bool sawElement() const { return m_bSawElement; }
    QString errorText() const { return m_qsError; }
    int droppedMarkup() const { return m_nDropped; }

    // "&amp;nbsp;" and "&nbsp;" -> " ", then &amp; &gt; &lt; &quot; &apos;,
    // then "_33_" -> "!", in this order.
    static QString decodeValue(const QString& qsValue);

    // Prepares a document's bytes (in an encoding that keeps ASCII as
    // ASCII) for the SAX reader, which cuts a character reference above
    // U+FFFF to 16 bits: such a reference is rewritten as the references of
    // its two surrogates, which the reader joins into the character. A
    // reference naming no character gives false with the reason in error.
    // References inside comments, CDATA and processing instructions are
    // text and stay as they are.
    static bool prepareReferences(QByteArray& body, QString& error);

private:
    bool acceptText(const QString& qsText, const QString& qsWhat);
    const QString& intern(const QString& qsName);

    CFxXmListlTag& m_top;
    int m_nDropped = 0;
    CXmlTagV2* m_current = nullptr;
    QXmlLocator* m_lpLocator = nullptr;
    int m_nDepth = 0;
    bool m_bSawElement = false;
    QString m_qsError;
    QHash<QString, QString> m_names;
};

QT_WARNING_POP

#endif
