#ifndef ZOR_FORM_CONFIG_RS_PARAM_FLDS_RS485_H
#define ZOR_FORM_CONFIG_RS_PARAM_FLDS_RS485_H

// Fuel level sensors on RS-485: 16 sensors, nodes "FS1" … "FS16".

#include "config/zor_form_config_rs_param_flds.h"

class ZOR_Form_Config_RS_Param_Flds_RS485 : public ZOR_Form_Config_RS_Param_Flds
{
    Q_OBJECT
public:
    static constexpr int nSensors = 16;
    explicit ZOR_Form_Config_RS_Param_Flds_RS485(QWidget* parent = nullptr);
};

#endif
