#ifndef ZOR_FORM_CONFIG_RS_PARAM_HRPS_H
#define ZOR_FORM_CONFIG_RS_PARAM_HRPS_H

// An HRPS controller: no settings and no node; it talks at 38400 baud, no parity.

#include "config/zor_form_config_rs_param.h"

class ZOR_Form_Config_RS_Param_Hrps : public ZOR_Form_Config_RS_Param
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_Hrps(QWidget* parent = nullptr);

public slots:
    void updateRs_Settings() override;
};

#endif
