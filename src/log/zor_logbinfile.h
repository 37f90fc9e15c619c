#ifndef ZOR_LOGBINFILE_H
#define ZOR_LOGBINFILE_H

// Readable log of the exchanges with the terminal: one time-stamped entry per
// text or per framed block (direction, header in hex, command word, rest of
// the data in hex). The host creates it and feeds it.
//
// The file format is relied on by people who read these logs with tools of
// their own, so its odd corners are kept: every text is written as
// text-length bytes of its local 8-bit form (a multi-byte locale cuts
// non-ASCII texts short; a hex dump has two digits per byte but is cut to the
// byte count, so it shows the first half of its bytes), and a block of 16
// bytes or less leaves its entry unfinished and the file open, which makes
// this object's later entries fail to open the file and get lost.

#include <QDataStream>
#include <QDateTime>
#include <QFile>
#include <QObject>
#include <QString>

#include <functional>

class ZOR_LogBinFile : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_LogBinFile(QString fileName, QObject* parent = nullptr);

    void setLogStr(QString text);
    void setLogBuf(bool isRead, unsigned char* buf, int len);
    // Length of the known command word text begins with, or 0.
    static int getLenCommand(QString text);

    // Clock of the time stamps (the local current time unless replaced).
    void setClock(std::function<QDateTime()> clock);

private:
    bool openForAppend();
    void writeStamp();
    // Writes count bytes of the local 8-bit form of text (never more than
    // that form holds).
    void writeCut(const QString& text, int count);
    void write(const QString& text) { writeCut(text, text.length()); }
    void writeHex(const char* bytes, int size);
    void writeEntryEnd();

    QString m_qsFileName;
    QFile m_file;
    QDataStream m_stream;
    std::function<QDateTime()> m_clock;
};

#endif
