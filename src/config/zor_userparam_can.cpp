#include "config/zor_userparam_can.h"

#include "config/zor_datatypes.h"

ZOR_UserParam_CAN::ZOR_UserParam_CAN(QObject* parent)
    : QObject(parent)
{
}

void ZOR_UserParam_CAN::setParam(
    int nPosition, int nNumber, const QString& qsTypeText, const QString& qsCaptionKey, const QString& qsCaption)
{
    nId = nPosition;
    nNum = nNumber;
    qsType = qsTypeText;
    qsKey = qsCaptionKey;
    qsTitle = qsCaption;
}

ZOR_UserParam_CAN_Bit* ZOR_UserParam_CAN::addParamBit(
    int nNumber, const QString& qsCaptionKey, const QString& qsCaption)
{
    auto* bit = new ZOR_UserParam_CAN_Bit(this);
    bit->setParam(nNumber, qsCaptionKey, qsCaption);
    lstBits.append(bit);
    return bit;
}

int ZOR_UserParam_CAN::numberType(const QString& qsType)
{
    return ZOR_DataTypes::codes().indexOf(qsType) + 1;
}

QString ZOR_UserParam_CAN::strNumberType(int nType)
{
    return nType >= 1 && nType <= ZOR_DataTypes::codes().size() ? ZOR_DataTypes::codes().at(nType - 1) : QString();
}
