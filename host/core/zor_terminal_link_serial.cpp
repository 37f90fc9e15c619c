#include "zor_terminal_link_serial.h"

#include <QFile>

#include <unistd.h>

namespace {

// Qt reports a port that another program holds and one the user may not
// open alike (a permission error, from the lock file or from the driver's
// exclusive mode); the device file's access rights tell the two apart.
ZOR_TerminalLink::Failure failureOf(QSerialPort::SerialPortError error, const QString& qsPort)
{
    using Failure = ZOR_TerminalLink::Failure;
    const QByteArray path = QFile::encodeName(
        qsPort.startsWith(QLatin1Char('/')) ? qsPort : QLatin1String("/dev/") + qsPort);
    if (error == QSerialPort::DeviceNotFoundError || ::access(path.constData(), F_OK) != 0)
        return Failure::NotFound;
    if (error != QSerialPort::PermissionError)
        return Failure::Other;
    return ::access(path.constData(), R_OK | W_OK) == 0 ? Failure::Busy : Failure::NoPermission;
}

} // namespace

ZOR_TerminalLink_Serial::ZOR_TerminalLink_Serial(const QString& qsPort, qint32 nBaud, QObject* parent)
    : ZOR_TerminalLink(parent)
    , m_qsPort(qsPort)
{
    m_port.setPortName(qsPort);
    m_port.setBaudRate(nBaud);
    m_port.setDataBits(QSerialPort::Data8);
    m_port.setParity(QSerialPort::NoParity);
    m_port.setStopBits(QSerialPort::OneStop);
    m_port.setFlowControl(QSerialPort::NoFlowControl);
    connect(&m_port, &QSerialPort::readyRead, this, [this] { emit signal_Received(m_port.readAll()); });
    connect(&m_port, &QSerialPort::errorOccurred, this, &ZOR_TerminalLink_Serial::slot_errorOccurred);
}

bool ZOR_TerminalLink_Serial::open()
{
    if (m_port.isOpen())
        return true;
    m_failure = Failure::None;
    if (m_port.open(QIODevice::ReadWrite))
        return true;
    m_qsError = m_port.errorString();
    m_failure = failureOf(m_port.error(), m_qsPort);
    return false;
}

void ZOR_TerminalLink_Serial::close()
{
    m_port.close();
}

void ZOR_TerminalLink_Serial::write(const QByteArray& bytes)
{
    if (m_port.isOpen())
        m_port.write(bytes);
}

QString ZOR_TerminalLink_Serial::description() const
{
    return QStringLiteral("%1, %2").arg(m_qsPort).arg(m_port.baudRate());
}

QString ZOR_TerminalLink_Serial::connectText() const
{
    return QStringLiteral("serial:%1:%2").arg(m_qsPort).arg(m_port.baudRate());
}

void ZOR_TerminalLink_Serial::slot_errorOccurred(QSerialPort::SerialPortError error)
{
    // Errors while opening are reported by open(); only a port that dies
    // under us is a lost link. An unplugged adapter reports a resource
    // error; a hung-up tty (the far end of a pty gone) reports read errors
    // at every poll, so that closes the link as well.
    if ((error != QSerialPort::ResourceError && error != QSerialPort::ReadError) || !m_port.isOpen())
        return;
    m_qsError = m_port.errorString();
    m_port.close();
    emit signal_Lost(m_qsError);
}
