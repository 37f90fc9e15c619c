#ifndef ZOR_SERVER_H
#define ZOR_SERVER_H

// One server of a telematics platform from the server list.

#include <QString>

class ZOR_Server
{
public:
    ZOR_Server() = default;
    ZOR_Server(const QString& qsName, const QString& qsDns, int nPort);

    void setName(const QString& qsName) { this->qsName = qsName; }
    QString getName() const { return qsName; }
    void setDNS(const QString& qsDns) { this->qsDns = qsDns; }
    QString getDNS() const { return qsDns; }
    void setPort(int nPort) { this->nPort = nPort; }
    // The list file keeps the port as text; anything but a number is 0.
    void setPort(const QString& qsPort);
    int getPort() const { return nPort; }

private:
    QString qsName;
    QString qsDns;
    int nPort = 0;
};

#endif
