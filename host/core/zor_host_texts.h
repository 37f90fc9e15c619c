#ifndef ZOR_HOST_TEXTS_H
#define ZOR_HOST_TEXTS_H

// The reference host's own texts (menus, status bar, dialogs) in Russian and
// English. The language is the one the module reads, the application
// property "zor_programLanguage"; any other than "en" shows Russian.

#include <QString>

QString zorHostText(const char* lpKey);
// The same text in a given language (zor-tool speaks English whatever the
// application property says).
QString zorHostText(const char* lpKey, bool bEnglish);

#endif
