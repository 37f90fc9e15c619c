#ifndef CONEPARAMETER_H
#define CONEPARAMETER_H

// A coreSzItem with constructors that format a value and accessors that
// parse it with the C library's rules (strtol / strtod: leading digits count,
// the rest is ignored). Every accessor returns false and leaves its output
// untouched when the value is empty.

#include "store/coreszitem.h"

#include <QString>

class COneParameter : public coreSzItem
{
public:
    COneParameter();
    explicit COneParameter(const coreSzItem& item);
    explicit COneParameter(const char* lpName); // a tag: kind 1, value = name
    COneParameter(const char* lpName, int nValue); // "%d"
    COneParameter(const char* lpName, bool bValue); // "%d": "0" or "1"
    COneParameter(const char* lpName, float fValue); // "%f"
    COneParameter(const char* lpName, const char* lpText, int nLength);
    COneParameter(const char* lpName, const QString& qsText); // via Windows-1251

    bool asInt(int& nValue) const;
    bool asBool(bool& bValue) const; // non-zero number; a word reads as false
    bool asFloat(float& fValue) const;
    bool asDouble(double& dValue) const;
    // Copies at most nLength bytes and always ends dst[nLength - 1] with NUL.
    bool asString(char* lpDst, int nLength) const;
    bool asQString(QString& qsValue) const;

    bool operator==(const char* lpName) const { return sameName(name, lpName); }
    // Exact, case-sensitive; lpName is compared cut as it would be stored,
    // so two names that differ only after nMaxTextLength collide.
    static bool sameName(const char* lpStored, const char* lpName);
    // The same test against a tree name as a record would hold it.
    static bool sameName(const QString& qsName, const char* lpName);
    // A tree name or text as a record holds it: Windows-1251, cut at
    // nMaxTextLength, NUL-terminated.
    static void copyName(char* lpDst, const QString& qsName);

    void setName(const char* lpName);
    void setValue(const char* lpText, int nLength = -1);

    // Copies at most nLength (or up to the NUL when negative) bytes of src,
    // cut at nMaxTextLength, NUL-terminated. A null src gives "".
    static void copyText(char* lpDst, const char* lpSrc, int nLength = -1);

private:
    void init(const char* lpName, int nKind);
};

#endif
