#include "commands/zor_commandhistory.h"

#include "module/zor_global.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

ZOR_CommandHistory::ZOR_CommandHistory(int nMaxEntries)
    : nMax(qMax(1, nMaxEntries))
{
}

void ZOR_CommandHistory::add(const QString& qsCommand)
{
    stopBrowsing();
    // A line end would split the entry in the file.
    if (qsCommand.isEmpty() || qsCommand.contains(QLatin1Char('\n')) || qsCommand.contains(QLatin1Char('\r')))
        return;
    lsEntries.removeAll(qsCommand);
    lsEntries << qsCommand;
    while (lsEntries.size() > nMax)
        lsEntries.removeFirst();
}

bool ZOR_CommandHistory::older(const QString& qsEditedNow, QString& qsOut)
{
    if (nPosition == 0 || lsEntries.isEmpty())
        return false;
    if (nPosition < 0) {
        qsEdited = qsEditedNow;
        nPosition = lsEntries.size();
    }
    qsOut = lsEntries.at(--nPosition);
    return true;
}

bool ZOR_CommandHistory::newer(QString& qsOut)
{
    if (nPosition < 0)
        return false;
    if (++nPosition >= lsEntries.size()) {
        nPosition = -1;
        qsOut = qsEdited;
    } else {
        qsOut = lsEntries.at(nPosition);
    }
    return true;
}

bool ZOR_CommandHistory::restore(QString& qsOut)
{
    if (nPosition < 0)
        return false;
    nPosition = -1;
    qsOut = qsEdited;
    return true;
}

QString ZOR_CommandHistory::defaultPath()
{
    return appUserDataDirectory() + QStringLiteral("/Localization/Temp/commands_history.txt");
}

bool ZOR_CommandHistory::load(const QString& qsPath)
{
    stopBrowsing();
    lsEntries.clear();
    QFile file(qsPath);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly)) {
        qsError = file.errorString();
        return false;
    }
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QString qsLine = QString::fromUtf8(line.endsWith('\r') ? line.chopped(1) : line);
        if (!qsLine.isEmpty())
            add(qsLine);
    }
    return true;
}

bool ZOR_CommandHistory::save(const QString& qsPath)
{
    QDir().mkpath(QFileInfo(qsPath).absolutePath());
    QSaveFile file(qsPath);
    if (!file.open(QIODevice::WriteOnly)) {
        qsError = file.errorString();
        return false;
    }
    QByteArray content;
    for (const QString& qsEntry : lsEntries)
        content += qsEntry.toUtf8() + '\n';
    file.write(content);
    if (!file.commit()) {
        qsError = file.errorString();
        return false;
    }
    return true;
}
