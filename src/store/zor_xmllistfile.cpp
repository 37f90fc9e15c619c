#include "store/zor_xmllistfile.h"

#include <QBuffer>
#include <QFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

ZOR_XmlListFile::ZOR_XmlListFile(
    const QString& qsRootElement_, const QString& qsRecordElement_, const QStringList& attributes_)
    : qsRootElement(qsRootElement_)
    , qsRecordElement(qsRecordElement_)
    , attributes(attributes_)
{
}

QList<QStringList> ZOR_XmlListFile::read(const QString& qsPath, bool& bOk) const
{
    bOk = true;
    QFile file(qsPath);
    if (!file.exists())
        return {};
    // A file too large for a list, or one that reads short, is no list to
    // be written over.
    if (!file.open(QIODevice::ReadOnly) || file.size() > nMaxFileBytes) {
        bOk = false;
        return {};
    }
    const QByteArray content = file.readAll();
    if (content.size() != file.size()) {
        bOk = false;
        return {};
    }
    return parse(content, bOk);
}

QList<QStringList> ZOR_XmlListFile::parse(const QByteArray& content, bool& bOk) const
{
    QList<QStringList> records;
    bOk = true;
    if (content.trimmed().isEmpty())
        return records;

    QXmlStreamReader reader(content);
    int nDepth = 0;
    bool bOtherChildren = false;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement)
            --nDepth;
        if (token != QXmlStreamReader::StartElement)
            continue;
        ++nDepth;
        // Another kind of list (a server list saved under the commands'
        // name) would lose all its records to the next save.
        if (nDepth == 1 && reader.name() != qsRootElement) {
            bOk = false;
            return records;
        }
        if (nDepth != 2)
            continue;
        if (reader.name() != qsRecordElement) {
            bOtherChildren = true;
            continue;
        }
        const QXmlStreamAttributes found = reader.attributes();
        QStringList fields;
        for (const QString& attribute : attributes)
            fields << found.value(attribute).toString();
        records << fields;
    }
    // Whatever was read before the fault is kept: the user sees it and it is
    // written back, the original going aside first.
    if (reader.hasError() || (bOtherChildren && records.isEmpty()))
        bOk = false;
    return records;
}

bool ZOR_XmlListFile::write(QIODevice* device, const QList<QStringList>& records) const
{
    QXmlStreamWriter writer(device);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeStartElement(qsRootElement);
    for (const QStringList& fields : records) {
        writer.writeEmptyElement(qsRecordElement);
        for (int i = 0; i < attributes.size(); ++i)
            writer.writeAttribute(attributes[i], xmlSafe(fields.value(i)));
    }
    writer.writeEndElement();
    writer.writeEndDocument();
    return !writer.hasError();
}

QByteArray ZOR_XmlListFile::toBytes(const QList<QStringList>& records) const
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    write(&buffer, records);
    return buffer.data();
}

// QXmlStreamWriter writes whatever it is given; a control character would
// make the file unreadable afterwards, which the bad-file rule would then
// treat as a broken file. They never belong in these lists anyway.
QString ZOR_XmlListFile::xmlSafe(const QString& s)
{
    QString result;
    result.reserve(s.size());
    for (const QChar c : s) {
        const ushort u = c.unicode();
        if ((u < 0x20 && u != '\t' && u != '\n' && u != '\r') || u == 0xFFFE || u == 0xFFFF)
            continue;
        result += c;
    }
    return result;
}
