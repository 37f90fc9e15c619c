#include "config/zor_form_config_rs485.h"

ZOR_Form_Config_RS485::ZOR_Form_Config_RS485(QWidget* parent)
    : ZOR_Form_Config_RS_Port(parent, RS485)
{
}
