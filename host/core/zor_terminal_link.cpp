#include "zor_terminal_link.h"

#include "zor_terminal_link_serial.h"
#include "zor_terminal_link_simulator.h"

#include <QStringList>

ZOR_TerminalLink* ZOR_TerminalLink::create(const QString& qsLink)
{
    if (qsLink == QLatin1String("simulator"))
        return new ZOR_TerminalLink_Simulator;
    const QStringList parts = qsLink.split(QLatin1Char(':'));
    if (parts.size() < 2 || parts.size() > 3 || parts[0] != QLatin1String("serial") || parts[1].isEmpty())
        return nullptr;
    bool bOk = true;
    const int nBaud = parts.size() == 3 ? parts[2].toInt(&bOk) : 115200;
    return bOk && nBaud > 0 ? new ZOR_TerminalLink_Serial(parts[1], nBaud) : nullptr;
}
