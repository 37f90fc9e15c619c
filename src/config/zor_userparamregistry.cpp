#include "config/zor_userparamregistry.h"

ZOR_UserParamRegistry::ZOR_UserParamRegistry(QObject* parent)
    : QObject(parent)
{
    qRegisterMetaType<ZOR_UserParamEntry>();
}

QVector<ZOR_UserParamEntry> ZOR_UserParamRegistry::entriesOfSize(int nSize) const
{
    QVector<ZOR_UserParamEntry> list;
    for (const ZOR_UserParamEntry& e : m_entries)
        if (e.nSize == nSize)
            list.append(e);
    return list;
}

int ZOR_UserParamRegistry::indexOf(const QString& qsPrefix, const QString& qsMess, const QString& qsSuffix) const
{
    const ZOR_UserParamEntry key{qsPrefix, qsMess, qsSuffix, 0};
    for (int i = 0; i < m_entries.size(); ++i)
        if (m_entries[i].sameValue(key))
            return i;
    return -1;
}

void ZOR_UserParamRegistry::slot_UserParam_Add(QString qsPrefix, QString qsMess, QString qsSuffix, int nSize)
{
    const int i = indexOf(qsPrefix, qsMess, qsSuffix);
    if (i >= 0) {
        ++m_counts[i];
        if (m_entries[i].nSize != nSize) {
            const ZOR_UserParamEntry old = m_entries[i];
            m_entries[i].nSize = nSize;
            emit signal_Removed(old);
            emit signal_Added(m_entries[i]);
        }
        return;
    }
    m_entries.append({qsPrefix, qsMess, qsSuffix, nSize});
    m_counts.append(1);
    emit signal_Added(m_entries.last());
}

void ZOR_UserParamRegistry::slot_UserParam_Del(QString qsPrefix, QString qsMess, QString qsSuffix)
{
    const int i = indexOf(qsPrefix, qsMess, qsSuffix);
    if (i < 0 || --m_counts[i] > 0)
        return;
    const ZOR_UserParamEntry old = m_entries.takeAt(i);
    m_counts.removeAt(i);
    emit signal_Removed(old);
}

void ZOR_UserParamRegistry::clear()
{
    m_entries.clear();
    m_counts.clear();
    emit signal_Cleared();
}
