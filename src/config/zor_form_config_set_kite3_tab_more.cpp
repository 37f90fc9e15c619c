#include "config/zor_form_config_set_kite3_tab_more.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {104},
    {105},
    {118, "cfgkt_036"},
    {119},
    {120},
    {121},
    {122, "cfgkt_037"},
    {142, "cfgkt_040"},
};

// The terminal fills these runs from their first field on; the lists show
// the number of sensors (tyres, temperature, humidity) or doors a count covers.
const Tab::Group kGroups[] = {
    {94, 4, "cfgkt_049", "0 2 6 14 30"},
    {110, 8, "cfgkt_050", "0 2 4 6 8 10 12 14 16"},
    {163, 4, "cfgkt_051", "0 1 2 3 4"},
    {167, 4, "cfgkt_052", "0 1 2 3 4"},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_More::ZOR_Form_Config_Set_Kite3_Tab_More(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("More"), "cfgkt_018");
    addBoxes(kBoxes);
    addGroups(kGroups);
    layoutByVersion();
}
