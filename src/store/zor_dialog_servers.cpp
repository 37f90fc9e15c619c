#include "store/zor_dialog_servers.h"

#include "module/zor_language.h"

#include <QTreeWidget>

namespace {

enum Column { NameColumn = 1, DnsColumn = 2, PortColumn = 3 };

// Preset platform records whose receiver moved to another port. User files
// written before the move still carry the old port; reading puts it right.
struct PortMove
{
    const char* name;
    const char* host;
    const char* oldPort;
    const char* newPort;
};
const PortMove kPortMoves[] = {
    {"ZOR Online", "srv.zor-online.ru", "30004", "30003"},
};

} // namespace

ZOR_Dialog_Servers::ZOR_Dialog_Servers(QWidget* parent)
    : ZOR_Dialog_XmlList(QStringLiteral("/Localization/Temp/servers.xml"), QStringLiteral("SERVERS"),
        QStringLiteral("SERVER"),
        {{QStringLiteral("name"), QStringLiteral("lst_020")}, {QStringLiteral("ip"), QStringLiteral("lst_021")},
            {QStringLiteral("port"), QStringLiteral("lst_022")}},
        parent)
{
    treeWidget()->setColumnWidth(NameColumn, 200);
    treeWidget()->setColumnWidth(DnsColumn, 200);
    readFile();
}

ZOR_Dialog_Servers::~ZOR_Dialog_Servers()
{
    qDeleteAll(vServers);
}

void ZOR_Dialog_Servers::getListServers(QStringList& list) const
{
    for (const ZOR_Server* server : vServers)
        list << server->getName();
}

ZOR_Server* ZOR_Dialog_Servers::getServer4Name(const QString& qsName) const
{
    for (ZOR_Server* server : vServers) {
        if (server->getName() == qsName)
            return server;
    }
    return nullptr;
}

ZOR_Server* ZOR_Dialog_Servers::getServer4DNS(const QString& qsDns, int nPort) const
{
    const QString qsWanted = qsDns.trimmed();
    for (ZOR_Server* server : vServers) {
        if (server->getPort() == nPort && server->getDNS().trimmed().compare(qsWanted, Qt::CaseInsensitive) == 0)
            return server;
    }
    return nullptr;
}

void ZOR_Dialog_Servers::addServer(const QString& qsDns, int nPort)
{
    showForm();
    QTreeWidgetItem* item = addNewItem();
    item->setText(NameColumn, uniqueValue(NameColumn, QStringLiteral("Current Server")));
    item->setText(DnsColumn, qsDns.simplified());
    item->setText(PortColumn, QString::number(nPort));
    treeWidget()->scrollToItem(item);
    treeWidget()->setCurrentItem(item);
}

void ZOR_Dialog_Servers::fixupRecord(QStringList& fields)
{
    for (const PortMove& move : kPortMoves) {
        if (fields.value(0) == QLatin1String(move.name) && fields.value(1) == QLatin1String(move.host)
            && fields.value(2) == QLatin1String(move.oldPort))
            fields[2] = QLatin1String(move.newPort);
    }
}

bool ZOR_Dialog_Servers::validateBeforeSave()
{
    return validateUniqueColumn(NameColumn, zorTr(QStringLiteral("cfgt1_198")));
}

QString ZOR_Dialog_Servers::dedupKey(const QStringList& fields)
{
    return fields.value(0);
}

QString ZOR_Dialog_Servers::confirmDeleteText()
{
    return zorTr(QStringLiteral("cfgt1_163"));
}

void ZOR_Dialog_Servers::appendRecord(const QStringList& fields, bool)
{
    auto* server = new ZOR_Server(fields.value(0), fields.value(1), 0);
    server->setPort(fields.value(2));
    vServers << server;
}

void ZOR_Dialog_Servers::clearRecords()
{
    qDeleteAll(vServers);
    vServers.clear();
}
