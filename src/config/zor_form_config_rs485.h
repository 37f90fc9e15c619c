#ifndef ZOR_FORM_CONFIG_RS485_H
#define ZOR_FORM_CONFIG_RS485_H

// The RS-485 interface page of the configuration (node "RS485").

#include "config/zor_form_config_rs_port.h"

class ZOR_Form_Config_RS485 : public ZOR_Form_Config_RS_Port
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS485(QWidget* parent = nullptr);
};

#endif
