#include "zor_terminal_link_simulator.h"

#include "zor_host_texts.h"

ZOR_TerminalLink_Simulator::ZOR_TerminalLink_Simulator(QObject* parent)
    : ZOR_TerminalLink(parent)
{
    m_idle.setSingleShot(true);
    m_idle.setInterval(ZOR_TerminalSimulator::nIdleFlushMs);
    connect(&m_idle, &QTimer::timeout, this, [this] { deliver(m_simulator.flush()); });
    m_pieces.setSingleShot(true);
    connect(&m_pieces, &QTimer::timeout, this, &ZOR_TerminalLink_Simulator::sendNextPiece);
}

void ZOR_TerminalLink_Simulator::setChunking(int nBytes, int nDelayMs)
{
    m_nChunkBytes = qMax(0, nBytes);
    m_nChunkDelayMs = qMax(0, nDelayMs);
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
    m_pieces.stop();
    m_outgoing.clear();
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
    return zorHostText("simulator");
}

QString ZOR_TerminalLink_Simulator::connectText() const
{
    if (m_nChunkBytes <= 0)
        return QStringLiteral("simulator");
    return QStringLiteral("simulator:%1:%2").arg(m_nChunkBytes).arg(m_nChunkDelayMs);
}

void ZOR_TerminalLink_Simulator::deliver(const QByteArray& replies)
{
    if (replies.isEmpty())
        return;
    m_outgoing += replies;
    if (!m_pieces.isActive())
        m_pieces.start(0);
}

void ZOR_TerminalLink_Simulator::sendNextPiece()
{
    if (!m_bOpen || m_outgoing.isEmpty())
        return;
    const int nSize = m_nChunkBytes > 0 ? qMin(m_nChunkBytes, m_outgoing.size()) : m_outgoing.size();
    const QByteArray piece = m_outgoing.left(nSize);
    m_outgoing.remove(0, nSize);
    if (!m_outgoing.isEmpty())
        m_pieces.start(m_nChunkDelayMs);
    emit signal_Received(piece);
}
