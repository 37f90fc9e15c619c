#ifndef ZOR_TMI_FORMATS_H
#define ZOR_TMI_FORMATS_H

// Field-set texts for tests: all fields up to lastField, or the listed ones.
// Record bytes are written out in the tests or come from tests/data/telemetry.

#include <QByteArray>
#include <QString>

#include <initializer_list>

inline QString fullFormat(int lastField = 255)
{
    return QString(lastField, QLatin1Char('1'));
}

inline QString formatOf(std::initializer_list<int> fields)
{
    QString s(255, QLatin1Char('0'));
    for (int n : fields)
        s[n - 1] = QLatin1Char('1');
    return s;
}

inline const unsigned char* recordBytes(const QByteArray& a)
{
    return reinterpret_cast<const unsigned char*>(a.constData());
}

#endif
