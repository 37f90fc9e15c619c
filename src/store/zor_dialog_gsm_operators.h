#ifndef ZOR_DIALOG_GSM_OPERATORS_H
#define ZOR_DIALOG_GSM_OPERATORS_H

// GSM operators with their access point data: the shipped list plus the
// user's own, file "/Localization/Temp/gsm_operators.xml", records
// GSM_OPERATOR(name, login, password, apn).

#include "store/zor_dialog_xmllist.h"

#include <QVector>

class ZOR_Dialog_GSM_Operators : public ZOR_Dialog_XmlList
{
    Q_OBJECT

public:
    // Field positions within a record.
    enum Field { Name = 0, Login, Password, Apn, FieldCount };

    explicit ZOR_Dialog_GSM_Operators(QWidget* parent = nullptr);

    // Operator names in list order.
    void getDataList(QStringList& list) const;
    // The first record of that name, or an empty list.
    QStringList getFirstByName(const QString& qsName) const;
    // The first record with this access point, login and password, or an
    // empty list (a form that shows the settings of a SIM finds its operator).
    QStringList getFirstByFields(const QString& qsApn, const QString& qsLogin, const QString& qsPassword) const;

    const QVector<QStringList>& records() const { return vRecords; }

protected:
    bool validateBeforeSave() override;
    QString dedupKey(const QStringList& fields) override;
    QString confirmDeleteText() override;
    void appendRecord(const QStringList& fields, bool isDefault) override;
    void clearRecords() override;

private:
    QVector<QStringList> vRecords;
};

#endif
