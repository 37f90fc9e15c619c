#ifndef ZOR_TMI_TEXTS_H
#define ZOR_TMI_TEXTS_H

// The telemetry window's own texts, by name: the keys "tmiwin_<name>" of
// the language fragments tmiwindow.<lang>.lang, looked up through the
// library's language service like every other caption.

#include <QString>

QString zorTmiText(const char* lpKey);

#endif
