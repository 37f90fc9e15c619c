#include "zor_tmi_envelope.h"

#include <limits>

namespace {

constexpr int kFirstBlock = 8;

} // namespace

void ZOR_TmiEnvelope::build(const double* lpValues, int nCount)
{
    m_lpValues = lpValues;
    m_nCount = nCount;
    m_levels.clear();
    const double dInf = std::numeric_limits<double>::infinity();
    QVector<Block> level((nCount + kFirstBlock - 1) / kFirstBlock, Block{dInf, -dInf});
    for (int i = 0; i < nCount; ++i) {
        Block& b = level[i / kFirstBlock];
        const double v = lpValues[i];
        // NaN fails both tests and stays out.
        if (v < b.dMin)
            b.dMin = v;
        if (v > b.dMax)
            b.dMax = v;
    }
    while (level.size() > 1) {
        QVector<Block> up((level.size() + 1) / 2);
        for (int i = 0; i < up.size(); ++i) {
            const Block& a = level.at(2 * i);
            const Block& b = 2 * i + 1 < level.size() ? level.at(2 * i + 1) : a;
            up[i] = Block{qMin(a.dMin, b.dMin), qMax(a.dMax, b.dMax)};
        }
        m_levels.append(level);
        level = up;
    }
    m_levels.append(level);
}

bool ZOR_TmiEnvelope::range(int nFirst, int nLast, double& dMin, double& dMax) const
{
    nFirst = qMax(nFirst, 0);
    nLast = qMin(nLast, m_nCount);
    double lo = std::numeric_limits<double>::infinity();
    double hi = -lo;
    auto take = [&](double a, double b) {
        if (a < lo)
            lo = a;
        if (b > hi)
            hi = b;
    };
    // Loose values up to block boundaries, then blocks level by level.
    while (nFirst < nLast && nFirst % kFirstBlock != 0) {
        take(m_lpValues[nFirst], m_lpValues[nFirst]);
        ++nFirst;
    }
    while (nFirst < nLast && nLast % kFirstBlock != 0 && nLast != m_nCount) {
        --nLast;
        take(m_lpValues[nLast], m_lpValues[nLast]);
    }
    if (nFirst < nLast) {
        int b = nFirst / kFirstBlock;
        int e = (nLast + kFirstBlock - 1) / kFirstBlock;
        for (int l = 0; b < e && l < m_levels.size(); ++l) {
            const QVector<Block>& level = m_levels.at(l);
            if (l + 1 == m_levels.size()) {
                for (int i = b; i < e; ++i)
                    take(level.at(i).dMin, level.at(i).dMax);
                break;
            }
            if (b % 2 != 0)
                take(level.at(b).dMin, level.at(b).dMax), ++b;
            // A last block without a partner goes up as its own parent.
            if (e % 2 != 0 && e != level.size())
                --e, take(level.at(e).dMin, level.at(e).dMax);
            b /= 2;
            e = (e + 1) / 2;
        }
    }
    if (lo > hi)
        return false;
    dMin = lo;
    dMax = hi;
    return true;
}

qint64 ZOR_TmiEnvelope::memoryBytes() const
{
    qint64 n = 0;
    for (const QVector<Block>& level : m_levels)
        n += level.capacity() * qint64(sizeof(Block));
    return n;
}
