#include "store/zor_dialog_gsm_operators.h"

#include "module/zor_language.h"

#include <QTreeWidget>

ZOR_Dialog_GSM_Operators::ZOR_Dialog_GSM_Operators(QWidget* parent)
    : ZOR_Dialog_XmlList(QStringLiteral("/Localization/Temp/gsm_operators.xml"), QStringLiteral("GSM_OPERATORS"),
        QStringLiteral("GSM_OPERATOR"),
        {{QStringLiteral("name"), QStringLiteral("lst_030")}, {QStringLiteral("login"), QStringLiteral("lst_031")},
            {QStringLiteral("password"), QStringLiteral("lst_032")},
            {QStringLiteral("apn"), QStringLiteral("lst_033")}},
        parent)
{
    treeWidget()->setColumnWidth(Name + 1, 180);
    readFile();
}

void ZOR_Dialog_GSM_Operators::getDataList(QStringList& list) const
{
    for (const QStringList& record : vRecords)
        list << record.value(Name);
}

QStringList ZOR_Dialog_GSM_Operators::getFirstByName(const QString& qsName) const
{
    for (const QStringList& record : vRecords) {
        if (record.value(Name) == qsName)
            return record;
    }
    return QStringList();
}

QStringList ZOR_Dialog_GSM_Operators::getFirstByFields(
    const QString& qsApn, const QString& qsLogin, const QString& qsPassword) const
{
    for (const QStringList& record : vRecords) {
        if (record.value(Apn) == qsApn && record.value(Login) == qsLogin && record.value(Password) == qsPassword)
            return record;
    }
    return QStringList();
}

bool ZOR_Dialog_GSM_Operators::validateBeforeSave()
{
    return validateUniqueColumn(Name + 1, zorTr(QStringLiteral("cfgt1_197")));
}

QString ZOR_Dialog_GSM_Operators::dedupKey(const QStringList& fields)
{
    return fields.value(Name);
}

QString ZOR_Dialog_GSM_Operators::confirmDeleteText()
{
    return zorTr(QStringLiteral("cfgt1_195"));
}

void ZOR_Dialog_GSM_Operators::appendRecord(const QStringList& fields, bool)
{
    vRecords << fields;
}

void ZOR_Dialog_GSM_Operators::clearRecords()
{
    vRecords.clear();
}
