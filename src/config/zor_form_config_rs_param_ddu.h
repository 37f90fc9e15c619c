#ifndef ZOR_FORM_CONFIG_RS_PARAM_DDU_H
#define ZOR_FORM_CONFIG_RS_PARAM_DDU_H

// A driver display (node "DDU": type, showFuelLvl, infoPeriod, address).
//
//   type   display        its own setting
//   DV01   DV-01          infoPeriod  seconds between screens, 5..3600 (30)
//   ICON   Omnicom ICON   address     network address, 1..254 (7)
//
// A node without "type", or with an unknown one, loads DV01. Both values
// are always written; the one the model does not use is shown disabled.

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_device.h"

class QComboBox;

class ZOR_Form_Config_RS_Param_DDU : public ZOR_Form_Config_RS_Device
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_DDU(QWidget* parent = nullptr);
    static const ZOR_CaptionList& models();
    QString model() const;

private:
    void modelChanged();
    void valuesShown() override { modelChanged(); }

    QComboBox* m_lpType = nullptr;
    QWidget* m_lpPeriod = nullptr;
    QWidget* m_lpAddress = nullptr;
};

#endif
