#include "config/zor_userparam_can_bit.h"

ZOR_UserParam_CAN_Bit::ZOR_UserParam_CAN_Bit(QObject* parent)
    : QObject(parent)
{
}

void ZOR_UserParam_CAN_Bit::setParam(int nNumber, const QString& qsCaptionKey, const QString& qsCaption)
{
    nNum = nNumber;
    qsKey = qsCaptionKey;
    qsTitle = qsCaption;
}
