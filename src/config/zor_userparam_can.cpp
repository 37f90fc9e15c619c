#include "config/zor_userparam_can.h"

#include <QStringList>

namespace {
const QStringList& typeCodes()
{
    static const QStringList codes = {"1b", "1u", "1s", "2b", "2u", "2s", "4b",
                                      "4u", "4s", "4f", "8b", "8u", "8s", "8f"};
    return codes;
}
}

ZOR_UserParam_CAN::ZOR_UserParam_CAN(QObject* parent) : QObject(parent) {}

void ZOR_UserParam_CAN::setParam(int nPosition, int nNumber, const QString& qsTypeText,
                                 const QString& qsCaptionKey, const QString& qsCaption)
{
    nId = nPosition;
    nNum = nNumber;
    qsType = qsTypeText;
    qsKey = qsCaptionKey;
    qsTitle = qsCaption;
}

ZOR_UserParam_CAN_Bit* ZOR_UserParam_CAN::addParamBit(int nNumber, const QString& qsCaptionKey,
                                                      const QString& qsCaption)
{
    auto* bit = new ZOR_UserParam_CAN_Bit(this);
    bit->setParam(nNumber, qsCaptionKey, qsCaption);
    lstBits.append(bit);
    return bit;
}

int ZOR_UserParam_CAN::numberType(const QString& qsType)
{
    return typeCodes().indexOf(qsType) + 1;
}

QString ZOR_UserParam_CAN::strNumberType(int nType)
{
    return nType >= 1 && nType <= typeCodes().size() ? typeCodes().at(nType - 1) : QString();
}
