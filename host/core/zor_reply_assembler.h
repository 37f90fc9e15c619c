#ifndef ZOR_REPLY_ASSEMBLER_H
#define ZOR_REPLY_ASSEMBLER_H

// Puts a terminal's replies back together before the module sees them. A
// serial driver hands over whatever has arrived (a reply may come in two
// reads, or two replies in one); the module reads each 2056 block as one
// reply. A reply ends at a line end ("\n", so "\r\n" stays whole) or when
// the line has been quiet for the idle gap (replies without a line end,
// binary data). A block never grows past nMaxBlock bytes.

#include <QByteArray>
#include <QObject>
#include <QTimer>

class ZOR_ReplyAssembler : public QObject
{
    Q_OBJECT
public:
    static constexpr int nDefaultIdleGapMs = 30;
    static constexpr int nMaxBlock = 64 * 1024;

    explicit ZOR_ReplyAssembler(QObject* parent = nullptr);

    void setIdleGapMs(int nMs);
    int idleGapMs() const { return m_idle.interval(); }

    void feed(const QByteArray& bytes);
    // Hands over what is pending now (the link is closing).
    void flush();
    void clear();
    bool hasPending() const { return !m_pending.isEmpty(); }

signals:
    void signal_Reply(const QByteArray& bytes);

private:
    QByteArray m_pending;
    QTimer m_idle;
};

#endif
