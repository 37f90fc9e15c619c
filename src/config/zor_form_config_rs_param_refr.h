#ifndef ZOR_FORM_CONFIG_RS_PARAM_REFR_H
#define ZOR_FORM_CONFIG_RS_PARAM_REFR_H

// A refrigeration unit (node "REFR": type, period, both texts). The
// unit's values are the catalogue's "RC" list, and "AX" for its auxiliary
// controller; getStrProtocolUserData("rc5") names them.
//
//   type       unit       speed        period  seconds between polls:
//   IQFREEZE   iQFreeze    9600        "10", "30", "60" (default), "120", "300"
//   DATACOLD   DataCold   38400
//   CARRIER    Carrier     9600
//
// Unknown codes load as the first model and 60 s; no parity, one stop bit.

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_device.h"

class QComboBox;

class ZOR_Form_Config_RS_Param_Refr : public ZOR_Form_Config_RS_Device
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_Refr(QWidget* parent = nullptr);
    static const ZOR_CaptionList& models();
    QString model() const;
    void setModel(const QString& qsModel);
    QString getStrProtocolUserData(QString qsId) override;
    QString getTypeUserParam(QString qsId) override;

public slots:
    void updateRs_Settings() override;

private:
    QComboBox* m_lpType = nullptr;
    QComboBox* m_lpPeriod = nullptr;
    ZOR_CaptionList m_periods;
};

#endif
