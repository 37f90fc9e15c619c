#ifndef ZOR_USERPARAMREGISTRY_H
#define ZOR_USERPARAMREGISTRY_H

// The values other pages offer for the telemetry record's user parameters.
// The configuration window connects every form's signal_UserParam_Add /
// signal_UserParam_Del here and gives the registry to the field-set form,
// whose User tab lists the entries by width. A value published twice (two
// pages, or a page that republishes on load) stays until it is withdrawn as
// many times; republishing with another size updates the size.

#include "config/zor_userparamentry.h"

#include <QObject>
#include <QVector>

class ZOR_UserParamRegistry : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_UserParamRegistry(QObject* parent = nullptr);

    const QVector<ZOR_UserParamEntry>& entries() const { return m_entries; }
    QVector<ZOR_UserParamEntry> entriesOfSize(int nSize) const;
    int indexOf(const QString& qsPrefix, const QString& qsMess, const QString& qsSuffix) const;

public slots:
    void slot_UserParam_Add(QString qsPrefix, QString qsMess, QString qsSuffix, int nSize);
    void slot_UserParam_Del(QString qsPrefix, QString qsMess, QString qsSuffix);
    void clear();

signals:
    void signal_Added(ZOR_UserParamEntry entry);
    void signal_Removed(ZOR_UserParamEntry entry);
    void signal_Cleared();

private:
    QVector<ZOR_UserParamEntry> m_entries;
    QVector<int> m_counts;
};

#endif
