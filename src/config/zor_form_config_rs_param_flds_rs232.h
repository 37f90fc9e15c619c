#ifndef ZOR_FORM_CONFIG_RS_PARAM_FLDS_RS232_H
#define ZOR_FORM_CONFIG_RS_PARAM_FLDS_RS232_H

// The fuel level sensor on RS-232: one sensor, node "FS1".

#include "config/zor_form_config_rs_param_flds.h"

class ZOR_Form_Config_RS_Param_Flds_RS232 : public ZOR_Form_Config_RS_Param_Flds
{
    Q_OBJECT
public:
    static constexpr int nSensors = 1;
    explicit ZOR_Form_Config_RS_Param_Flds_RS232(QWidget* parent = nullptr);
};

#endif
