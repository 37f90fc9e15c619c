#ifndef ZOR_LIST_SANDBOX_H
#define ZOR_LIST_SANDBOX_H

// Test fixture for the list files: a temporary application data directory
// (restored on destruction) and an answerer for the list dialogs' message
// boxes that records every question and gives scripted answers.

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QTemporaryDir>

class ZorListSandbox
{
public:
    ZorListSandbox();
    ~ZorListSandbox();

    QString path(const QString& qsSubPath) const;
    void write(const QString& qsSubPath, const QByteArray& content) const;
    QByteArray read(const QString& qsSubPath) const;
    bool exists(const QString& qsSubPath) const;
    // A list file with one record element per row, attributes in order.
    static QByteArray listXml(
        const QString& qsRoot, const QString& qsRecord, const QStringList& attributes, const QList<QStringList>& rows);
    // The command list file with these [name, command] rows.
    static QByteArray commandsXml(const QList<QStringList>& rows);

    // The given attributes of every record element of a list file, in order.
    QList<QStringList> records(const QString& qsSubPath, const QString& qsRecord, const QStringList& attributes) const;

    // Answers given to the next questions in turn; when they run out the
    // first button (0) is pressed.
    QList<int> answers;
    // "title|text" of every message box asked.
    QStringList asked;
    // Texts entered into the next text questions in turn; a null QString
    // cancels; when they run out the proposal is taken as it is.
    QStringList textAnswers;
    // "title|label|proposal" of every text question.
    QStringList askedText;

private:
    QTemporaryDir dir;
};

#endif
