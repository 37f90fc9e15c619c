#ifndef ZOR_TERMINAL_SIMULATOR_H
#define ZOR_TERMINAL_SIMULATOR_H

// A simulated terminal: answers the text commands of the console the way a
// real tracker does, byte for byte, with no timers and no I/O of its own so
// that the same object serves the in-process link, the pseudo-terminal
// program zor-sim and the tests.
//
// Requests carry no terminator of their own (the console sends the command
// bytes as they are), so a request ends at CR or LF, where the next "*?",
// "*!" or "*>" begins, or when the transport reports that the line went
// quiet (flush()). Every reply ends with "\r\n".

#include <QByteArray>

class ZOR_TerminalSimulator
{
public:
    // How long a transport waits for more bytes before calling flush().
    static constexpr int nIdleFlushMs = 40;

    // The fixed 19-digit ICCID of SIM 1 or 2 (empty for other numbers).
    static QByteArray iccid(int nSim);
    // The reply to one whole request, "\r\n" included.
    QByteArray reply(const QByteArray& request);

    // Takes received bytes; returns the replies to the requests they end.
    QByteArray feed(const QByteArray& bytes);
    // Ends the pending request (the line went quiet); returns its reply.
    QByteArray flush();
    bool hasPending() const { return !m_pending.isEmpty(); }

private:
    QByteArray takeRequest(int nEnd, int nSkip);

    QByteArray m_pending;
    int m_nSmsMode = 0;
    int m_nRateMs = 1000;
};

#endif
