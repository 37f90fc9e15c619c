#include "commands/zor_consolelogfile.h"

#include "log/zor_logbinfile.h"

#include <QFile>
#include <QFileInfo>

ZOR_ConsoleLogFile::ZOR_ConsoleLogFile(QObject* parent)
    : QObject(parent)
{
}

ZOR_ConsoleLogFile::~ZOR_ConsoleLogFile() = default;

QString ZOR_ConsoleLogFile::rotatedName(const QString& qsPath, int n)
{
    return QStringLiteral("%1.%2").arg(qsPath).arg(n);
}

bool ZOR_ConsoleLogFile::start(const QString& qsFile)
{
    stop();
    qsPath = qsFile;
    qsError.clear();
    // The log writer tells nothing of a file it cannot open: try it first.
    QFile probe(qsPath);
    if (!probe.open(QIODevice::WriteOnly | QIODevice::Append)) {
        qsError = probe.errorString();
        return false;
    }
    const bool bOld = probe.size() > 0;
    probe.close();
    if (bOld && !rotate())
        return false;
    if (!lpFile)
        lpFile.reset(new ZOR_LogBinFile(qsPath));
    return true;
}

void ZOR_ConsoleLogFile::stop()
{
    lpFile.reset();
}

// The current file becomes <file>.1 and a new one is begun.
bool ZOR_ConsoleLogFile::rotate()
{
    lpFile.reset();
    QFile::remove(rotatedName(qsPath, nKeptFiles));
    for (int n = nKeptFiles - 1; n >= 1; --n) {
        if (QFile::exists(rotatedName(qsPath, n)))
            QFile::rename(rotatedName(qsPath, n), rotatedName(qsPath, n + 1));
    }
    QFile current(qsPath);
    if (!current.rename(rotatedName(qsPath, 1))) {
        qsError = current.errorString();
        return false;
    }
    lpFile.reset(new ZOR_LogBinFile(qsPath));
    return true;
}

void ZOR_ConsoleLogFile::append(int direction, const QByteArray& data)
{
    if (!lpFile)
        return;
    QString qsEntry;
    if (direction == 0 || direction == 1) {
        QString qsAscii(data.size(), Qt::Uninitialized);
        for (int i = 0; i < data.size(); ++i) {
            const unsigned char b = static_cast<unsigned char>(data[i]);
            qsAscii[i] = b > 32 && b < 127 ? QLatin1Char(char(b)) : QLatin1Char('.');
        }
        qsEntry = QStringLiteral("%1 %2\r%3\r%4")
                      .arg(QLatin1String(direction == 0 ? "OUT" : "IN"))
                      .arg(data.size())
                      .arg(qsAscii, QString::fromLatin1(data.toHex()));
    } else {
        for (const char c : data)
            qsEntry += static_cast<unsigned char>(c) >= 32 && static_cast<unsigned char>(c) < 127 ? QLatin1Char(c)
                                                                                                  : QLatin1Char('.');
    }
    lpFile->setLogStr(qsEntry);
    if (QFileInfo(qsPath).size() >= nMaxBytes && !rotate())
        lpFile.reset();
}
