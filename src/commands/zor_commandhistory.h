#ifndef ZOR_COMMANDHISTORY_H
#define ZOR_COMMANDHISTORY_H

// The free commands the user sent, newest last, as a shell keeps them:
// Up walks back, Down walks forward to the line being edited, and Esc puts
// that line back. Kept in a file so that it survives the console and the
// host (one command per line, UTF-8; the command line holds no line ends).

#include <QString>
#include <QStringList>

class ZOR_CommandHistory
{
public:
    explicit ZOR_CommandHistory(int nMaxEntries = 200);

    // A sent command becomes the newest entry (an equal older one moves up)
    // and browsing starts again from the edited line.
    void add(const QString& qsCommand);
    QStringList entries() const { return lsEntries; }

    // Up: the next older entry; qsEdited is the line as it stands, kept the
    // first time. False when there is nothing older.
    bool older(const QString& qsEdited, QString& qsOut);
    // Down: the next newer entry, or the edited line past the newest.
    bool newer(QString& qsOut);
    // Esc: the edited line while browsing; false when not browsing.
    bool restore(QString& qsOut);
    bool isBrowsing() const { return nPosition >= 0; }
    void stopBrowsing() { nPosition = -1; }

    bool load(const QString& qsPath);
    bool save(const QString& qsPath);
    QString errorString() const { return qsError; }
    // <appUserDataDirectory()>/Localization/Temp/commands_history.txt
    static QString defaultPath();

private:
    QStringList lsEntries;
    int nMax;
    int nPosition = -1; // index into lsEntries while browsing
    QString qsEdited;
    QString qsError;
};

#endif
