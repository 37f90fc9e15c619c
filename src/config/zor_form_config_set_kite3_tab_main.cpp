#include "config/zor_form_config_set_kite3_tab_main.h"

namespace {

using Tab = ZOR_Form_Config_Set_Kite3_Tab;

const Tab::Box kBoxes[] = {
    {1, "tmikte_123", "%1", Tab::Fixed},
    {2, "tmikte_124", "%1", Tab::Fixed},
    {3, "tmikte_125", "%1", Tab::Fixed},
    {4, "cfgkt_020", "%1", Tab::Default},
    {5, "cfgkt_021", "%1", Tab::Default},
    {6, "cfgkt_022", "%1", Tab::Default},
    {7, "tmikte_145", "%1", Tab::Default},
    {19, "tmikte_158", "%1", Tab::Default},
    {20, "tmikte_159", "%1", Tab::Default},
    {21},
    {22},
    {23},
    {24},
    {25},
    {26},
    {27},
    {28},
    {29, "cfgkt_024", "%1 1-8", Tab::Default},
    {30, "cfgkt_024", "%1 9-16"},
    {31, "cfgkt_025", "%1 1-8", Tab::Default},
    {32, "cfgkt_025", "%1 9-16"},
    {33},
    {34},
    {35},
    {36},
    {37},
    {45},
    {46},
    {47},
    {48},
    {49},
    {50},
    {51},
    {52},
    {123},
    {124},
    {125},
    {126, "cfgkt_024", "%1 17-24"},
    {127},
    {128},
    {129},
    {130},
    {131},
    {132},
    {133},
    {134},
    {135},
    {136},
    {137},
    {138},
    {200},
    {205},
    {206},
};

} // namespace

ZOR_Form_Config_Set_Kite3_Tab_Main::ZOR_Form_Config_Set_Kite3_Tab_Main(QWidget* parent)
    : ZOR_Form_Config_Set_Kite3_Tab(parent)
{
    setTabName(QStringLiteral("Main"), "cfgkt_010");
    addBoxes(kBoxes);
    layoutByVersion();
}
