#include "config/zor_form_config_rs232.h"

ZOR_Form_Config_RS232::ZOR_Form_Config_RS232(QWidget* parent)
    : ZOR_Form_Config_RS_Port(parent, RS232)
{
}
