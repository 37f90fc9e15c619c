#include "config/zor_form_config_set_kite3_tab_rs.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {38},
    {39},
    {40},
    {41},
    {42},
    {43},
    {44},
    {78},
    {79},
    {80},
    {81},
    {82},
    {83},
    {84},
    {85},
    {86},
    {87},
    {88},
    {89},
    {90},
    {91},
    {92},
    {93},
    {147},
    {148},
    {149},
    {150},
    {151},
    {152},
    {153},
    {154},
    {155},
    {156},
    {157},
    {158},
    {159},
    {160},
    {161},
    {162},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_RS::ZOR_Form_Config_Set_Kite3_Tab_RS(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("RS"), "cfgkt_012");
    addBoxes(kBoxes);
    layoutByVersion();
}
