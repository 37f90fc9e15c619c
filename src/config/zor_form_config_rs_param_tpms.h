#ifndef ZOR_FORM_CONFIG_RS_PARAM_TPMS_H
#define ZOR_FORM_CONFIG_RS_PARAM_TPMS_H

// Tyre pressure sensors (node "TPMS": type, holdTime 1..255 s, default
// 15). Each receiver model talks at a fixed speed, no parity:
//
//   type       caption       speed
//   PRESSPRO   PressurePro   38400     (default, also for an unknown type)
//   BRDGESTN   Bridgestone   38400
//   TM508      TM508T22U      9600
//   TPMS613    TPMS 6-13     19200
//   TD18       TD18,20,21    19200
//   TD21       TD21          19200

#include "config/zor_captionlist.h"
#include "config/zor_form_config_rs_device.h"

class QComboBox;

class ZOR_Form_Config_RS_Param_Tpms : public ZOR_Form_Config_RS_Device
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_Tpms(QWidget* parent = nullptr);
    static const ZOR_CaptionList& models();
    QString model() const;
    void setModel(const QString& qsModel);

public slots:
    void updateRs_Settings() override;

private:
    QComboBox* m_lpType = nullptr;
};

#endif
