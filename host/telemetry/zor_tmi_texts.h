#ifndef ZOR_TMI_TEXTS_H
#define ZOR_TMI_TEXTS_H

// The telemetry window's own texts in Russian and English (the column
// captions come from the library's language service). The language is the
// application property "zor_programLanguage"; any other than "en" shows
// Russian.

#include <QString>

QString zorTmiText(const char* lpKey);

#endif
