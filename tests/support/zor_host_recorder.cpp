#include "zor_host_recorder.h"

#include <QIcon>

#include <cstring>

ZOR_HostRecorder& ZOR_HostRecorder::instance()
{
    static ZOR_HostRecorder recorder;
    return recorder;
}

unsigned long ZOR_HostRecorder::callback(void* sender, int message, unsigned long wParam, unsigned long lParam)
{
    ZOR_HostRecorder& host = instance();
    ZOR_HostRecord record;
    record.lpSender = sender;
    record.nMessage = message;
    record.wParam = wParam;
    record.lParam = lParam;
    switch (message) {
    case ZOR_MSG_MENU_ADD:
    case ZOR_MSG_MENU_UPDATE: {
        auto* item = reinterpret_cast<szMenuItem*>(wParam);
        record.qsCaption = QString::fromLocal8Bit(item->szCaption);
        record.bIcon = item->lpIcon && !static_cast<QIcon*>(item->lpIcon)->isNull();
        record.nHandle = item->nMenuHandle;
        if (message == ZOR_MSG_MENU_ADD)
            item->nMenuHandle = host.nMenuHandle;
        break;
    }
    case ZOR_MSG_MENU_ENABLE:
        record.nHandle = wParam;
        record.nEnable = *reinterpret_cast<const uint8_t*>(lParam);
        break;
    case ZOR_MSG_SEND_TO_DEVICE: record.bytes = *reinterpret_cast<const QByteArray*>(wParam); break;
    case ZOR_MSG_GET_CONFIG_PARAM: {
        auto* param = reinterpret_cast<szConfigParam*>(wParam);
        qstrncpy(param->szUssdBalance, host.ussdRequest.constData(), sizeof(param->szUssdBalance));
        break;
    }
    case ZOR_MSG_GET_COORDSYSTEM:
        reinterpret_cast<ZOR_RAVEL_CMND_COORDSYSTEM*>(wParam)->nCoordSystem = host.nCoordSystem;
        break;
    default: break;
    }
    host.records.append(record);
    return 0;
}

QList<int> ZOR_HostRecorder::codes() const
{
    QList<int> result;
    for (const ZOR_HostRecord& record : records)
        result.append(record.nMessage);
    return result;
}

QList<QByteArray> ZOR_HostRecorder::sent() const
{
    QList<QByteArray> result;
    for (const ZOR_HostRecord& record : records)
        if (record.nMessage == ZOR_MSG_SEND_TO_DEVICE)
            result.append(record.bytes);
    return result;
}
