#ifndef ZOR_TERMINAL_LINK_H
#define ZOR_TERMINAL_LINK_H

// The host's connection to a terminal: bytes out, bytes in. The host keeps
// one at a time; the simulated terminal and the serial port are the two
// kinds. Received bytes are signalled on the thread that owns the link.

#include <QByteArray>
#include <QObject>
#include <QString>

class ZOR_TerminalLink : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    // Why open() failed, for callers that word the failure themselves
    // (a command-line tool tells a busy port from a forbidden one).
    enum class Failure { None, NotFound, Busy, NoPermission, Other };

    // A new, unopened link from its command-line form: "simulator",
    // "simulator:CHUNK[:DELAY]" (replies in pieces of CHUNK bytes, DELAY ms
    // apart, 20 when left out), "serial:PORT" or "serial:PORT:BAUD" (115200
    // when left out). Null when the text is none of these.
    static ZOR_TerminalLink* create(const QString& qsLink);

    // False when the link could not be opened; errorString() says why.
    virtual bool open() = 0;
    virtual void close() = 0;
    virtual void write(const QByteArray& bytes) = 0;
    // Short text for the status bar ("simulator", "/dev/ttyUSB0, 115200").
    virtual QString description() const = 0;
    // The command-line form that create() makes this link again from.
    virtual QString connectText() const = 0;
    QString errorString() const { return m_qsError; }
    Failure failure() const { return m_failure; }

signals:
    void signal_Received(const QByteArray& bytes);
    // The link broke while open (cable pulled); it is closed already.
    void signal_Lost(const QString& qsReason);

protected:
    QString m_qsError;
    Failure m_failure = Failure::None;
};

#endif
