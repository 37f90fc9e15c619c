#include "module/zor_global.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QVariant>

namespace {
const char* const kLanguageProperty = "zor_programLanguage";
QString& appDataDirectoryOverride()
{
    static QString qsDirectory;
    return qsDirectory;
}
}

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
