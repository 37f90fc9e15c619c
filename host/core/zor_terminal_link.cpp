#include "zor_terminal_link.h"

#include "zor_terminal_link_serial.h"
#include "zor_terminal_link_simulator.h"

#include <QStringList>

ZOR_TerminalLink* ZOR_TerminalLink::create(const QString& qsLink)
{
    const QStringList parts = qsLink.split(QLatin1Char(':'));
    if (parts[0] == QLatin1String("simulator") && parts.size() <= 3) {
        bool bOk = true;
        const int nChunk = parts.size() > 1 ? parts[1].toInt(&bOk) : 0;
        bool bOkDelay = true;
        const int nDelay = parts.size() > 2 ? parts[2].toInt(&bOkDelay) : 20;
        if (!bOk || !bOkDelay || nChunk < 0 || nDelay < 0)
            return nullptr;
        auto* lpLink = new ZOR_TerminalLink_Simulator;
        lpLink->setChunking(nChunk, nDelay);
        return lpLink;
    }
    if (parts.size() < 2 || parts.size() > 3 || parts[0] != QLatin1String("serial") || parts[1].isEmpty())
        return nullptr;
    bool bOk = true;
    const int nBaud = parts.size() == 3 ? parts[2].toInt(&bOk) : 115200;
    return bOk && nBaud > 0 ? new ZOR_TerminalLink_Serial(parts[1], nBaud) : nullptr;
}
