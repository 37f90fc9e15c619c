#include "module/zor_language.h"

#include "module/zor_global.h"

#include <QFile>

ZOR_Language& ZOR_Language::instance()
{
    static ZOR_Language language;
    return language;
}

QString ZOR_Language::languageFilePath(const QString& qsLanguage)
{
    return appSharedDataDirectory() + QStringLiteral("/Localization/Lang/zor_") + qsLanguage + QStringLiteral(".lang");
}

QHash<QString, QString> ZOR_Language::parse(const QByteArray& content)
{
    QHash<QString, QString> result;
    const QList<QByteArray> lines = content.split('\n');
    for (QByteArray line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const int eq = line.indexOf('=');
        if (eq <= 0)
            continue;
        const QString key = QString::fromUtf8(line.left(eq)).trimmed();
        const QString raw = QString::fromUtf8(line.mid(eq + 1));
        QString value;
        value.reserve(raw.size());
        for (int i = 0; i < raw.size(); ++i) {
            if (raw[i] == QLatin1Char('\\') && i + 1 < raw.size()) {
                const QChar n = raw[++i];
                if (n == QLatin1Char('n'))
                    value += QLatin1Char('\n');
                else if (n == QLatin1Char('t'))
                    value += QLatin1Char('\t');
                else
                    value += n;
            } else {
                value += raw[i];
            }
        }
        result.insert(key, value);
    }
    return result;
}

bool ZOR_Language::load(const QString& language)
{
    texts.clear();
    qsLanguage = language;
    loaded = true;
    if (language == QLatin1String("keys"))
        return true;
    // Russian is the complete language: another one, or one without a file,
    // shows the Russian caption of every key it lacks rather than the key.
    const QString qsFallback = QStringLiteral("ru");
    QFile fallback(languageFilePath(qsFallback));
    if (language != qsFallback && fallback.open(QIODevice::ReadOnly))
        texts = parse(fallback.readAll());
    QFile file(languageFilePath(language));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QHash<QString, QString> own = parse(file.readAll());
    for (auto it = own.constBegin(); it != own.constEnd(); ++it) {
        if (!it->isEmpty())
            texts.insert(it.key(), it.value());
    }
    return true;
}

void ZOR_Language::reload()
{
    loaded = false;
    texts.clear();
}

void ZOR_Language::ensureLoaded()
{
    if (loaded)
        return;
    QString language = programLanguage();
    if (language.isEmpty())
        language = QStringLiteral("ru");
    load(language);
}

QString ZOR_Language::text(const QString& key)
{
    ensureLoaded();
    const auto it = texts.constFind(key);
    if (it == texts.constEnd() || it->isEmpty())
        return key;
    return *it;
}

bool ZOR_Language::contains(const QString& key)
{
    ensureLoaded();
    return texts.contains(key);
}

QString zorTr(const QString& key)
{
    return ZOR_Language::instance().text(key);
}
