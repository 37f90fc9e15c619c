#ifndef ZOR_LANGUAGE_H
#define ZOR_LANGUAGE_H

// Caption lookup by key (mdln_001, wrd_038, abbr_013, tmikte_027, ...).
//
// One language file per language lies below the shipped data:
// <appSharedDataDirectory()>/Localization/Lang/zor_<lang>.lang, UTF-8,
// one "key=text" per line; '#' starts a comment line; "\n", "\t" and "\\"
// in a text are escapes. The language is programLanguage(), "ru" when it is
// empty. The pseudo-language "keys" shows every key as itself.
// A key missing from the file shows its Russian caption, and a key that
// Russian lacks as well shows as the key, never as an empty text.
// The host's 2031 message (language changed) calls reload().

#include <QHash>
#include <QString>

class ZOR_Language
{
public:
    static ZOR_Language& instance();

    // Text of a key in the current language (loads the file on first use).
    QString text(const QString& key);
    bool contains(const QString& key);

    // Drops the loaded texts; the next lookup reads the file of the current
    // programLanguage() again.
    void reload();
    // Loads the file of this language now, whatever programLanguage() says
    // (tests and the command-line tool use it). Returns false when no file
    // was found (then every key shows as itself).
    bool load(const QString& qsLanguage);

    QString language() const { return qsLanguage; }
    static QString languageFilePath(const QString& qsLanguage);
    // Parses one language file's content into key/text pairs.
    static QHash<QString, QString> parse(const QByteArray& content);

private:
    ZOR_Language() = default;
    void ensureLoaded();

    QHash<QString, QString> texts;
    QString qsLanguage;
    bool loaded = false;
};

// Shorthand used throughout the module: zorTr("mdln_001").
QString zorTr(const QString& key);

#endif
