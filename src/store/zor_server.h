#ifndef ZOR_SERVER_H
#define ZOR_SERVER_H

// One server of a telematics platform from the server list.

#include <QString>

class ZOR_Server
{
public:
    ZOR_Server() = default;
    ZOR_Server(const QString& qsName, const QString& qsDns, int nPort);

    void setName(const QString& qsName) { this->m_qsName = qsName; }
    QString getName() const { return m_qsName; }
    void setDNS(const QString& qsDns) { this->m_qsDns = qsDns; }
    QString getDNS() const { return m_qsDns; }
    void setPort(int nPort) { this->m_nPort = nPort; }
    // The list file keeps the port as text; anything but a number is 0.
    void setPort(const QString& qsPort);
    int getPort() const { return m_nPort; }

private:
    QString m_qsName;
    QString m_qsDns;
    int m_nPort = 0;
};

#endif
