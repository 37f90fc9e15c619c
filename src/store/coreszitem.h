#ifndef CORESZITEM_H
#define CORESZITEM_H

// One named value of a settings element, as a fixed-size record that is
// copied by value. Names and values are Windows-1251 bytes, NUL-terminated,
// at most nMaxTextLength characters (longer texts are cut).

#include <QtGlobal>

class CXmlTagV2;

struct coreSzItem
{
    enum { nMaxTextSize = 255, nMaxTextLength = nMaxTextSize - 1 };
    enum Kind { KindValue = 0, KindTag = 1 };

    char name[nMaxTextSize];
    char value[nMaxTextSize];
    qint32 kind; // KindValue: an attribute; KindTag: a child element
    CXmlTagV2* node; // the child element for KindTag, otherwise null
};

#endif
