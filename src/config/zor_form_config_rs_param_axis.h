#ifndef ZOR_FORM_CONFIG_RS_PARAM_AXIS_H
#define ZOR_FORM_CONFIG_RS_PARAM_AXIS_H

// An AXIS controller on the line: node "AXIS" with "holdTime", seconds a
// value is held, 1..255 (15).

#include "config/zor_form_config_rs_device.h"

class ZOR_Form_Config_RS_Param_Axis : public ZOR_Form_Config_RS_Device
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS_Param_Axis(QWidget* parent = nullptr);
};

#endif
