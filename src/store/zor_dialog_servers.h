#ifndef ZOR_DIALOG_SERVERS_H
#define ZOR_DIALOG_SERVERS_H

// Servers of telematics platforms: the shipped list plus the user's own,
// file "/Localization/Temp/servers.xml", records SERVER(name, ip, port).

#include "store/zor_dialog_xmllist.h"
#include "store/zor_server.h"

#include <QVector>

class ZOR_Dialog_Servers : public ZOR_Dialog_XmlList
{
    Q_OBJECT

public:
    explicit ZOR_Dialog_Servers(QWidget* parent = nullptr);
    ~ZOR_Dialog_Servers() override;

    void getListServers(QStringList& list) const;
    ZOR_Server* getServer4Name(const QString& qsName) const;
    // Host names compare without regard to case or surrounding blanks.
    ZOR_Server* getServer4DNS(const QString& qsDns, int nPort) const;
    // Opens the editor with a new row for this host and port, named
    // "Current Server" (made unique), selected; the user saves it.
    void addServer(const QString& qsDns, int nPort);

    const QVector<ZOR_Server*>& servers() const { return m_vServers; }

protected:
    void fixupRecord(QStringList& fields) override;
    bool validateBeforeSave() override;
    QString dedupKey(const QStringList& fields) override;
    QString confirmDeleteText() override;
    void appendRecord(const QStringList& fields, bool isDefault) override;
    void clearRecords() override;

private:
    QVector<ZOR_Server*> m_vServers;
};

#endif
