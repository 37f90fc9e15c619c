#ifndef ZOR_USERPARAM_CAN_H
#define ZOR_USERPARAM_CAN_H

// One entry of the CAN and controller catalogue (ZOR_UserParams): a value
// the terminal reads from a vehicle bus or an external controller and can
// report as a numbered user parameter.
//
// The type text is the value's width in bytes and its kind: "1u", "2s",
// "4f", "2b"... (u unsigned, s signed, f float, b bit set). A bit-set entry
// carries the bits that have numbers of their own, in ascending order; they
// are its children and die with it.

#include "config/zor_userparam_can_bit.h"

#include <QObject>
#include <QString>
#include <QVector>

class ZOR_UserParam_CAN : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_UserParam_CAN(QObject* parent = nullptr);

    void setParam(int nId, int nNum, const QString& qsType, const QString& qsKey, const QString& qsTitle);
    ZOR_UserParam_CAN_Bit* addParamBit(int nNum, const QString& qsKey, const QString& qsTitle);

    // Position in the list, from 1.
    int getParam_Id() const { return nId; }
    // The number the terminal uses for the value.
    int getParam_Num() const { return nNum; }
    // The caption in the language current when the list was built.
    QString getParamTitle() const { return qsTitle; }
    // The language key of the caption (of its first part when composed).
    QString getParamKey() const { return qsKey; }
    QString getStrNumberType() const { return qsType; }
    // The type as a number, see numberType().
    int getNumberType() const { return numberType(qsType); }
    bool isBitSet() const { return qsType.endsWith(QLatin1Char('b')); }
    const QVector<ZOR_UserParam_CAN_Bit*>& getListParamBit() const { return lstBits; }

    // Number form of a type text: its position, from 1, in the shared list of
    // data-type codes (ZOR_DataTypes::codes(), "2u" is 5);
    // 0 for any other text. strNumberType() is the way back ("" for 0).
    static int numberType(const QString& qsType);
    static QString strNumberType(int nType);

private:
    int nId = 0;
    int nNum = 0;
    QString qsType;
    QString qsKey;
    QString qsTitle;
    QVector<ZOR_UserParam_CAN_Bit*> lstBits;
};

#endif
