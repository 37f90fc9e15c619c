#ifndef ZOR_FORM_CONFIG_RS232_H
#define ZOR_FORM_CONFIG_RS232_H

// The RS-232 interface page of the configuration (node "RS232").

#include "config/zor_form_config_rs_port.h"

class ZOR_Form_Config_RS232 : public ZOR_Form_Config_RS_Port
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_RS232(QWidget* parent = nullptr);
};

#endif
