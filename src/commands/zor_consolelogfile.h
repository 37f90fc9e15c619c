#ifndef ZOR_CONSOLELOGFILE_H
#define ZOR_CONSOLELOGFILE_H

// The console's exchange, recorded as it happens into an exchange log file
// (ZOR_LogBinFile): one text entry per log row. A row of bytes is the
// direction and size, the bytes in ASCII (others as ".") and the bytes in
// hexadecimal, each on a line of its own; a row without a direction
// (CONNECT, DISCONNECT) is its text. The file is rotated by size: when it
// reaches maxBytes() it becomes "<file>.1", the older ones move one number
// up, and keptFiles() of them are kept. An existing file at start is
// rotated the same way, never overwritten.

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>

class ZOR_LogBinFile;

class ZOR_ConsoleLogFile : public QObject
{
    Q_OBJECT
public:
    static constexpr qint64 nDefaultMaxBytes = 8 * 1024 * 1024;
    static constexpr int nDefaultKeptFiles = 5;

    explicit ZOR_ConsoleLogFile(QObject* parent = nullptr);
    ~ZOR_ConsoleLogFile() override;

    // False with errorString() when the file cannot be written.
    bool start(const QString& qsPath);
    void stop();
    bool isActive() const { return bool(m_lpFile); }
    QString fileName() const { return m_qsPath; }
    QString errorString() const { return m_qsError; }

    void setMaxBytes(qint64 nBytes) { m_nMaxBytes = qMax<qint64>(1, nBytes); }
    qint64 maxBytes() const { return m_nMaxBytes; }
    void setKeptFiles(int nFiles) { m_nKeptFiles = qMax(1, nFiles); }
    int keptFiles() const { return m_nKeptFiles; }

    // direction: 0 sent, 1 received, anything else a row of text.
    void append(int direction, const QByteArray& data);
    // "<path>.<n>": the n-th older file.
    static QString rotatedName(const QString& qsPath, int n);

private:
    bool rotate();

    std::unique_ptr<ZOR_LogBinFile> m_lpFile;
    QString m_qsPath;
    QString m_qsError;
    qint64 m_nMaxBytes = nDefaultMaxBytes;
    int m_nKeptFiles = nDefaultKeptFiles;
};

#endif
