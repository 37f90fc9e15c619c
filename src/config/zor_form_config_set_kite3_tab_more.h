#ifndef ZOR_FORM_CONFIG_SET_KITE3_TAB_MORE_H
#define ZOR_FORM_CONFIG_SET_KITE3_TAB_MORE_H

// Field-set tab: everything else: tyre pressure and passenger counts (runs chosen as
// counts), the driver's display, the informer, the camera, axis accelerations
// and the precise temperature and humidity sensors.

#include "config/zor_form_config_set_kite3_tab.h"

class ZOR_Form_Config_Set_Kite3_Tab_More : public ZOR_Form_Config_Set_Kite3_Tab
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config_Set_Kite3_Tab_More(QWidget* parent = nullptr);
};

#endif
