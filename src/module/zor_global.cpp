#include "module/zor_global.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QVariant>

#include <dlfcn.h>

namespace {
const char* const kLanguageProperty = "zor_programLanguage";
QString& appDataDirectoryOverride()
{
    static QString qsDirectory;
    return qsDirectory;
}

bool holdsShippedData(const QString& qsDirectory)
{
    return QFileInfo(qsDirectory + QStringLiteral("/Localization/Lang")).isDir();
}
} // namespace

void setAppDataDirectory(const QString& qsDirectory)
{
    appDataDirectoryOverride() = qsDirectory;
}

QString appDataDirectory()
{
    if (!appDataDirectoryOverride().isEmpty())
        return appDataDirectoryOverride();
    if (QCoreApplication::instance())
        return QCoreApplication::applicationDirPath();
    return QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).absolutePath();
}

QString moduleLibraryPath()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<void*>(&moduleLibraryPath), &info) || !info.dli_fname)
        return QString();
    return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).canonicalFilePath();
}

QString appSharedDataDirectory()
{
    if (!appDataDirectoryOverride().isEmpty())
        return appDataDirectoryOverride();
    const QString qsProgram = appDataDirectory();
    if (holdsShippedData(qsProgram))
        return qsProgram;
    const QString candidates[] = {
        qsProgram + QStringLiteral("/" ZOR_BIN_TO_DATA),
        QFileInfo(moduleLibraryPath()).absolutePath() + QStringLiteral("/" ZOR_LIB_TO_DATA),
    };
    for (const QString& qsCandidate : candidates) {
        if (holdsShippedData(qsCandidate))
            return QDir::cleanPath(qsCandidate);
    }
    return qsProgram;
}

QString appUserDataDirectory()
{
    if (!appDataDirectoryOverride().isEmpty())
        return appDataDirectoryOverride();
    const QString qsProgram = appDataDirectory();
    if (appSharedDataDirectory() == qsProgram) {
        // The folder the user's files go to in a build tree.
        const QFileInfo temp(qsProgram + QStringLiteral("/Localization/Temp"));
        if ((temp.isDir() ? temp : QFileInfo(qsProgram)).isWritable())
            return qsProgram;
    }
    QString qsData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (qsData.isEmpty())
        qsData = QDir::homePath() + QStringLiteral("/.local/share");
    return qsData + QStringLiteral("/zor-commands");
}

QString programLanguage()
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app)
        return QString();
    return app->property(kLanguageProperty).toString();
}

void setProgramLanguage(const QString& qsLanguage)
{
    if (QCoreApplication* app = QCoreApplication::instance())
        app->setProperty(kLanguageProperty, qsLanguage);
}

QString ensureSuffix(const QString& s, const QString& suffix)
{
    if (s.isEmpty() || s.endsWith(suffix))
        return s;
    return s + suffix;
}

Qt::WindowFlags configDialogFlags()
{
    return Qt::Window | Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint;
}
