#ifndef ZOR_TMI_ENVELOPE_H
#define ZOR_TMI_ENVELOPE_H

// The minimum and maximum of any run of a long series of values, answered
// from a summary built once: levels of blocks of 8, 16, 32... values, each
// with its minimum and maximum. A run is its few loose values at both ends
// plus at most two blocks per level, so a chart asks one run per pixel
// column and never walks a million values. Missing values (NaN) are left
// out; a run of nothing but missing values has no range.

#include <QVector>

class ZOR_TmiEnvelope
{
public:
    ZOR_TmiEnvelope() = default;
    // The values are not copied: they must outlive the summary unchanged.
    void build(const double* lpValues, int nCount);
    int count() const { return m_nCount; }
    // Minimum and maximum of values [nFirst, nLast); false when the run
    // holds no value.
    bool range(int nFirst, int nLast, double& dMin, double& dMax) const;
    // Bytes the summary takes (not the values).
    qint64 memoryBytes() const;

private:
    struct Block
    {
        double dMin;
        double dMax;
    };
    const double* m_lpValues = nullptr;
    int m_nCount = 0;
    QVector<QVector<Block>> m_levels;
};

#endif
