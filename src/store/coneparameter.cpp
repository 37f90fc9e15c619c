#include "store/coneparameter.h"

#include "module/zor_cp1251.h"

#include <QByteArray>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <locale.h>

namespace {

// The application object switches the C library to the user's locale, in
// which "%f" and strtod may use a decimal comma; settings files always use
// the point.
locale_t cLocale()
{
    static const locale_t c = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    return c;
}

} // namespace

COneParameter::COneParameter()
{
    init(nullptr, KindValue);
}

COneParameter::COneParameter(const coreSzItem& item)
    : coreSzItem(item)
{
}

COneParameter::COneParameter(const char* lpName)
{
    init(lpName, KindTag);
    copyText(value, name);
}

COneParameter::COneParameter(const char* lpName, int nValue)
{
    init(lpName, KindValue);
    std::snprintf(value, sizeof value, "%d", nValue);
}

COneParameter::COneParameter(const char* lpName, bool bValue)
{
    init(lpName, KindValue);
    std::snprintf(value, sizeof value, "%d", bValue ? 1 : 0);
}

COneParameter::COneParameter(const char* lpName, float fValue)
{
    init(lpName, KindValue);
    const QByteArray text = QByteArray::number(static_cast<double>(fValue), 'f', 6);
    setValue(text.constData(), text.size());
}

COneParameter::COneParameter(const char* lpName, const char* lpText, int nLength)
{
    init(lpName, KindValue);
    setValue(lpText, nLength);
}

COneParameter::COneParameter(const char* lpName, const QString& qsText)
{
    init(lpName, KindValue);
    const QByteArray bytes = ZOR_Cp1251::encode(qsText);
    setValue(bytes.constData(), bytes.size());
}

void COneParameter::init(const char* lpName, int nKind)
{
    copyText(name, lpName);
    value[0] = '\0';
    kind = nKind;
    node = nullptr;
}

void COneParameter::copyText(char* lpDst, const char* lpSrc, int nLength)
{
    if (!lpSrc) {
        lpDst[0] = '\0';
        return;
    }
    const size_t limit = nLength < 0 || nLength > nMaxTextLength ? size_t(nMaxTextLength) : size_t(nLength);
    const size_t n = strnlen(lpSrc, limit);
    std::memcpy(lpDst, lpSrc, n);
    lpDst[n] = '\0';
}

void COneParameter::setName(const char* lpName)
{
    copyText(name, lpName);
}

void COneParameter::setValue(const char* lpText, int nLength)
{
    copyText(value, lpText, nLength);
}

bool COneParameter::asInt(int& nValue) const
{
    if (!value[0])
        return false;
    nValue = static_cast<int>(std::strtol(value, nullptr, 10));
    return true;
}

bool COneParameter::asBool(bool& bValue) const
{
    int n = 0;
    if (!asInt(n))
        return false;
    bValue = n != 0;
    return true;
}

bool COneParameter::asFloat(float& fValue) const
{
    if (!value[0])
        return false;
    fValue = strtof_l(value, nullptr, cLocale());
    return true;
}

bool COneParameter::asDouble(double& dValue) const
{
    if (!value[0])
        return false;
    dValue = strtod_l(value, nullptr, cLocale());
    return true;
}

bool COneParameter::asString(char* lpDst, int nLength) const
{
    if (!value[0] || !lpDst || nLength <= 0)
        return false;
    std::strncpy(lpDst, value, size_t(nLength));
    lpDst[nLength - 1] = '\0';
    return true;
}

bool COneParameter::asQString(QString& qsValue) const
{
    if (!value[0])
        return false;
    qsValue = ZOR_Cp1251::decode(value, int(std::strlen(value)));
    return true;
}

bool COneParameter::sameName(const char* lpStored, const char* lpName)
{
    // Names are stored cut at nMaxTextLength, so a longer name matches its cut.
    return lpName && std::strncmp(lpStored, lpName, nMaxTextLength) == 0;
}

bool COneParameter::sameName(const QString& qsName, const char* lpName)
{
    if (!lpName)
        return false;
    // As strncmp on the record copyName would make, without making it.
    const int size = qsName.size();
    const QChar* p = qsName.constData();
    int n = 0;
    for (int i = 0; i < size && n < nMaxTextLength; ++i, ++n) {
        const char c = ZOR_Cp1251::encodeAt(p, i, size);
        if (c != lpName[n])
            return false;
        if (!c)
            return true;
    }
    return n == nMaxTextLength || lpName[n] == '\0';
}

void COneParameter::copyName(char* lpDst, const QString& qsName)
{
    const int size = qsName.size();
    const QChar* p = qsName.constData();
    int n = 0;
    for (int i = 0; i < size && n < nMaxTextLength; ++i)
        lpDst[n++] = ZOR_Cp1251::encodeAt(p, i, size);
    lpDst[n] = '\0';
}
