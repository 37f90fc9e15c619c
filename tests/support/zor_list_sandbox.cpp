#include "zor_list_sandbox.h"

#include "module/zor_global.h"
#include "module/zor_language.h"
#include "store/zor_dialog_xmllist.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

ZorListSandbox::ZorListSandbox()
{
    // The built language files come along, so messages carry their real
    // texts with the placeholders filled in.
    const QString qsLang = QStringLiteral("/Localization/Lang/");
    QDir().mkpath(dir.path() + qsLang);
    for (const QString& qsLanguage : {QStringLiteral("ru"), QStringLiteral("en")}) {
        const QString qsFile = QStringLiteral("zor_") + qsLanguage + QStringLiteral(".lang");
        QFile::copy(appDataDirectory() + qsLang + qsFile, dir.path() + qsLang + qsFile);
    }
    setAppDataDirectory(dir.path());
    ZOR_Language::instance().reload();
    ZOR_Dialog_XmlList::setAnswerer(
        [this](QMessageBox::Icon, const QString& qsTitle, const QString& qsText, const QStringList&) {
            asked << qsTitle + QLatin1Char('|') + qsText;
            return answers.isEmpty() ? 0 : answers.takeFirst();
        });
    ZOR_Dialog_XmlList::setTextAnswerer([this](const QString& qsTitle, const QString& qsLabel, QString& qsValue) {
        askedText << qsTitle + QLatin1Char('|') + qsLabel + QLatin1Char('|') + qsValue;
        if (textAnswers.isEmpty())
            return true;
        const QString qsAnswer = textAnswers.takeFirst();
        if (qsAnswer.isNull())
            return false;
        qsValue = qsAnswer;
        return true;
    });
}

ZorListSandbox::~ZorListSandbox()
{
    ZOR_Dialog_XmlList::setAnswerer(nullptr);
    ZOR_Dialog_XmlList::setTextAnswerer(nullptr);
    setAppDataDirectory(QString());
    ZOR_Language::instance().reload();
}

QString ZorListSandbox::path(const QString& qsSubPath) const
{
    return dir.path() + qsSubPath;
}

void ZorListSandbox::write(const QString& qsSubPath, const QByteArray& content) const
{
    QDir().mkpath(QFileInfo(path(qsSubPath)).absolutePath());
    QFile file(path(qsSubPath));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(content);
}

QByteArray ZorListSandbox::read(const QString& qsSubPath) const
{
    QFile file(path(qsSubPath));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool ZorListSandbox::exists(const QString& qsSubPath) const
{
    return QFileInfo::exists(path(qsSubPath));
}

QByteArray ZorListSandbox::listXml(
    const QString& qsRoot, const QString& qsRecord, const QStringList& attributes, const QList<QStringList>& rows)
{
    QByteArray content;
    QXmlStreamWriter writer(&content);
    writer.writeStartDocument();
    writer.writeStartElement(qsRoot);
    for (const QStringList& row : rows) {
        writer.writeEmptyElement(qsRecord);
        for (int i = 0; i < attributes.size() && i < row.size(); ++i)
            writer.writeAttribute(attributes[i], row[i]);
    }
    writer.writeEndElement();
    writer.writeEndDocument();
    return content;
}

QList<QStringList> ZorListSandbox::records(
    const QString& qsSubPath, const QString& qsRecord, const QStringList& attributes) const
{
    QList<QStringList> rows;
    QXmlStreamReader reader(read(qsSubPath));
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement || reader.name() != qsRecord)
            continue;
        QStringList row;
        for (const QString& attribute : attributes)
            row << reader.attributes().value(attribute).toString();
        rows << row;
    }
    return rows;
}

QByteArray ZorListSandbox::commandsXml(const QList<QStringList>& rows)
{
    return listXml(
        QStringLiteral("COMMANDS"), QStringLiteral("COMMAND"), {QStringLiteral("name"), QStringLiteral("cmnd")}, rows);
}
