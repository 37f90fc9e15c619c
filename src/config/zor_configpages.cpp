#include "config/zor_configpages.h"

#include "config/zor_form_config.h"
#include "config/zor_form_config_bluetooth.h"

const QVector<ZOR_ConfigPage>& zorConfigPages()
{
    static const QVector<ZOR_ConfigPage> pages = {
        {"bluetooth", "cfgble_041", &zorCreateConfigForm<ZOR_Form_Config_Bluetooth>, false},
    };
    return pages;
}
