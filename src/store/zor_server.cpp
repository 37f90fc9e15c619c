#include "store/zor_server.h"

ZOR_Server::ZOR_Server(const QString& qsName_, const QString& qsDns_, int nPort_)
    : m_qsName(qsName_)
    , m_qsDns(qsDns_)
    , m_nPort(nPort_)
{
}

void ZOR_Server::setPort(const QString& qsPort)
{
    bool bOk = false;
    const int nValue = qsPort.trimmed().toInt(&bOk);
    m_nPort = bOk ? nValue : 0;
}
