#ifndef ZOR_TERMINAL_LINK_SERIAL_H
#define ZOR_TERMINAL_LINK_SERIAL_H

// A terminal on a serial port (USB adapter, or a pseudo-terminal served by
// zor-sim). 8N1, no flow control, as the trackers use.

#include "zor_terminal_link.h"

#include <QSerialPort>

class ZOR_TerminalLink_Serial : public ZOR_TerminalLink
{
    Q_OBJECT
public:
    // qsPort: a name below /dev ("ttyUSB0") or a full path.
    ZOR_TerminalLink_Serial(const QString& qsPort, qint32 nBaud, QObject* parent = nullptr);

    bool open() override;
    void close() override;
    void write(const QByteArray& bytes) override;
    QString description() const override;
    QString connectText() const override;

private:
    void slot_errorOccurred(QSerialPort::SerialPortError error);

    QString m_qsPort;
    QSerialPort m_port;
};

#endif
