#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_NAVI_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_NAVI_H

// Field-set tab: navigation: the receiver's fix, coordinates, speed and mileage, and the
// extended navigation block with the LBS cells.

#include "config/zor_form_config_set_kite3_tab.h"

class ZOR_Form_Config_Set_Kite3_Tab_Navi : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_Navi(QWidget* parent = nullptr);
};

#endif
