#include "zor_terminal_link_simulator.h"

ZOR_TerminalLink_Simulator::ZOR_TerminalLink_Simulator(QObject* parent)
    : ZOR_TerminalLink(parent)
{
    m_idle.setSingleShot(true);
    m_idle.setInterval(ZOR_TerminalSimulator::nIdleFlushMs);
    connect(&m_idle, &QTimer::timeout, this, [this] { deliver(m_simulator.flush()); });
}

bool ZOR_TerminalLink_Simulator::open()
{
    m_bOpen = true;
    return true;
}

void ZOR_TerminalLink_Simulator::close()
{
    m_bOpen = false;
    m_idle.stop();
    m_simulator.flush();
}

void ZOR_TerminalLink_Simulator::write(const QByteArray& bytes)
{
    if (!m_bOpen)
        return;
    deliver(m_simulator.feed(bytes));
    if (m_simulator.hasPending())
        m_idle.start();
}

QString ZOR_TerminalLink_Simulator::description() const
{
    return QStringLiteral("симулятор терминала");
}

void ZOR_TerminalLink_Simulator::deliver(const QByteArray& replies)
{
    if (replies.isEmpty())
        return;
    QTimer::singleShot(0, this, [this, replies] {
        if (m_bOpen)
            emit signal_Received(replies);
    });
}
