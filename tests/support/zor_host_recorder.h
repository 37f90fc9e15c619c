#ifndef ZOR_HOST_RECORDER_H
#define ZOR_HOST_RECORDER_H

// A stand-in for the host's side of the message link: it records every
// message the module sends (copying what the records held during the call)
// and answers the questions a host answers.

#include "module/zor_host_link.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVector>

struct ZOR_HostRecord
{
    void* lpSender = nullptr;
    int nMessage = 0;
    unsigned long wParam = 0;
    unsigned long lParam = 0;
    QByteArray bytes; // 2055: the bytes to send
    QString qsCaption; // 2032/2033
    bool bIcon = false; // 2032/2033: a non-null icon was passed
    uint64_t nHandle = 0; // 2033: record's handle; 2036: wParam
    int nEnable = -1; // 2036: the byte lParam points to
};

class ZOR_HostRecorder
{
public:
    static ZOR_HostRecorder& instance();
    static unsigned long callback(void* sender, int message, unsigned long wParam, unsigned long lParam);

    void clear() { records.clear(); }
    QList<int> codes() const;
    // Bytes of every 2055, in order.
    QList<QByteArray> sent() const;

    QVector<ZOR_HostRecord> records;
    uint64_t nMenuHandle = 0x5A0C0DE; // written back on 2032
    QByteArray ussdRequest = "*100#"; // answer to 2356
    int nCoordSystem = 0; // answer to 2038
};

#endif
