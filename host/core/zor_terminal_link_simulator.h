#ifndef ZOR_TERMINAL_LINK_SIMULATOR_H
#define ZOR_TERMINAL_LINK_SIMULATOR_H

// The simulated terminal as an in-process link. Replies come back from the
// event loop, never from inside write(): the module must not get data
// (2056) while it is still sending (2055).

#include "zor_terminal_link.h"
#include "zor_terminal_simulator.h"

#include <QTimer>

class ZOR_TerminalLink_Simulator : public ZOR_TerminalLink
{
    Q_OBJECT
public:
    explicit ZOR_TerminalLink_Simulator(QObject* parent = nullptr);

    // Replies go out in pieces of nBytes with nDelayMs between them, as a
    // slow line delivers them (0 bytes: whole, the default).
    void setChunking(int nBytes, int nDelayMs);

    bool open() override;
    void close() override;
    void write(const QByteArray& bytes) override;
    QString description() const override;
    QString connectText() const override;

private:
    void deliver(const QByteArray& replies);
    void sendNextPiece();

    ZOR_TerminalSimulator m_simulator;
    QTimer m_idle;
    QTimer m_pieces;
    QByteArray m_outgoing;
    int m_nChunkBytes = 0;
    int m_nChunkDelayMs = 0;
    bool m_bOpen = false;
};

#endif
