#ifndef ZOR_USERPARAM_CAN_BIT_H
#define ZOR_USERPARAM_CAN_BIT_H

// One bit of a bit-set entry of the CAN and controller catalogue. The bit
// has a parameter number of its own (the numbers between a bit-set entry
// and the next entry of its list) and a caption. Owned by its entry.

#include <QObject>
#include <QString>

class ZOR_UserParam_CAN_Bit : public QObject
{
    Q_OBJECT
public:
    explicit ZOR_UserParam_CAN_Bit(QObject* parent = nullptr);

    void setParam(int nNum, const QString& qsKey, const QString& qsTitle);

    int getParam_Num() const { return m_nNum; }
    // The caption in the language current when the list was built.
    QString getParamTitle() const { return m_qsTitle; }
    // The language key the caption was looked up by.
    QString getParamKey() const { return m_qsKey; }

private:
    int m_nNum = 0;
    QString m_qsKey;
    QString m_qsTitle;
};

#endif
