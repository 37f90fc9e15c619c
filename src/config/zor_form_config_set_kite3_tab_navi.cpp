#include "config/zor_form_config_set_kite3_tab_navi.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {8, "cfgkt_023", "%1", Tab::Default},
    {9, "tmikte_148", "%1", Tab::Default},
    {10, "tmikte_149", "%1", Tab::Default},
    {11, "tmikte_150", "%1", Tab::Default},
    {12, "tmikte_151", "%1", Tab::Default},
    {13, "tmikte_152", "%1", Tab::Default},
    {14, "tmikte_153", "%1", Tab::Default},
    {15, "tmikte_154", "%1", Tab::Default},
    {16},
    {17},
    {18},
    {70, "cfgkt_028"},
    {71, "cfgkt_029"},
    {72, "cfgkt_030"},
    {73, "cfgkt_031"},
    {74},
    {75},
    {76},
    {77, "cfgkt_032"},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_Navi::ZOR_Form_Config_Set_Kite3_Tab_Navi(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("Navi"), "cfgkt_011");
    addBoxes(kBoxes);
    layoutByVersion();
}
