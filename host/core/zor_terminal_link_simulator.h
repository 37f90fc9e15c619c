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

    bool open() override;
    void close() override;
    void write(const QByteArray& bytes) override;
    QString description() const override;

private:
    void deliver(const QByteArray& replies);

    ZOR_TerminalSimulator m_simulator;
    QTimer m_idle;
    bool m_bOpen = false;
};

#endif
