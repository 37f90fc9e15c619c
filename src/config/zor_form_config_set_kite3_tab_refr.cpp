#include "config/zor_form_config_set_kite3_tab_refr.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {182, "cfgkt_043"},
    {183},
    {184},
    {185},
    {186},
    {187},
    {188},
    {189},
    {190},
    {191},
    {192},
    {193},
    {194},
    {195, "cfgkt_053"},
    {196, "cfgkt_044", "%1 2-3"},
    {197, "cfgkt_044", "%1 4-6"},
    {198, "cfgkt_045"},
    {199},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_Refr::ZOR_Form_Config_Set_Kite3_Tab_Refr(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("Refr"), "cfgkt_016");
    addBoxes(kBoxes);
    layoutByVersion();
}
