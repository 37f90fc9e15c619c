#ifndef ZOR_FORM_CONFIG_RS_PARAM_PCNT_H
#define ZOR_FORM_CONFIG_RS_PARAM_PCNT_H

// Passenger counters, one per door (node "PCNT"). Written in this order:
//
//   type        "PP01" PP-01 (default), "ACOND" ACOND, "ACOND2" ACOND-2
//   id1..id7    counter address of door 1..7, 1..250 (door n: n)
//   countEvent  when a record with the counts is made: 0 never, 1 when a
//               door closes (default), 2 when every door is closed
//   door        doors with a counter, 1..7 (1); the addresses of the
//               others are kept but shown disabled
//   offTime     seconds after the ignition is off before the counts are
//               reset, 0..999999999 (1800)
//   coordTime   seconds at a stop before its place is recorded, 0..3600 (10)
//
// The counts are the catalogue's "CO" list: getStrProtocolUserData("co5").

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_device.h"

#include <QVector>

class QComboBox;
class QSpinBox;

class ZOR_Form_Config_RS_Param_Pcnt : public ZOR_Form_Config_RS_Device
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_Pcnt(QWidget* parent = nullptr);
    static constexpr int nDoors = 7;
    static const ZOR_CaptionList& models();
    QString getStrProtocolUserData(QString qsId) override;
    QString getTypeUserParam(QString qsId) override;

public slots:
    void translateForm() override;

private:
    void doorsChanged();
    void valuesShown() override { doorsChanged(); }

    QComboBox* m_lpType = nullptr;
    QComboBox* m_lpEvent = nullptr;
    QVector<QWidget*> m_ids;
    QSpinBox* m_lpDoors = nullptr;
    ZOR_CaptionList m_events;
};

#endif
