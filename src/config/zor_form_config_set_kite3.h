#ifndef ZOR_FORM_CONFIG_SET_KITE3_H
#define ZOR_FORM_CONFIG_SET_KITE3_H

// The protocol field-set form: which protocol version the terminal stores
// and sends its records in and, for that version, which telemetry fields a
// record carries. Ten tabs of fields (ZOR_Form_Config_Set_Kite3_Tab_*), a
// running record size and a warning once the record would exceed 512 bytes.
//
// Saved below the document's top element:
//
//   <PROTOCOL page="PROTOCOL">
//       <KITE format="30" mask="1111111000..." />     255 characters, field n at n - 1
//       <USERPARAMS> ... </USERPARAMS>                 see ZOR_Form_Config_Set_Kite3_Tab_User
//   </PROTOCOL>
//
// format is "10" (KITE 1.0), "20" (KITE 2.0) or "30" (KITE 3.0); any other
// stored value loads as KITE 3.0. Fields 1-3 (record number, event code,
// time) are always in the record. The record size counts the fields of the
// selected version only; positions of newer versions keep their characters
// (see ZOR_Form_Config_Set_Kite3_Tab for this and the other decisions).
//
// Over 512 bytes the size turns red, the warning shows, the User tab is
// disabled, and signal_Excess_Size(true) is emitted once; coming back to 512
// or less emits signal_Excess_Size(false) once.

#include "config/zor_captionlist.h"
#include "config/zor_form_config.h"

#include <QVector>

#include <initializer_list>
#include <memory>

namespace Ui {
class ZOR_Form_Config_Set_Kite3;
}
class ZOR_Form_Config_Set_Kite3_Tab;
class ZOR_Form_Config_Set_Kite3_Tab_User;

class ZOR_Form_Config_Set_Kite3 : public ZOR_Form_Config
{
    Q_OBJECT
public:
    static constexpr int nMaxRecordSize = 512;

    explicit ZOR_Form_Config_Set_Kite3(QWidget* parent = nullptr);
    ~ZOR_Form_Config_Set_Kite3() override;

    void initForm() override;
    void translateForm() override;
    void deviceConnect() override;
    void deviceDisconnect() override;
    void setFormEnabled(bool bEnabled) override;
    void setDefaultParam() override;
    void readFormParam(CXMLWorkData* lpRoot) override;
    void writeFormParam(CXMLWorkData* lpRoot) override;
    void applyProfile(const ZOR_TerminalProfile& profile) override;
    void setUserParamRegistry(ZOR_UserParamRegistry* lpRegistry) override;
    // "Main", "Navi", "RS", "CAN", "Accel", "Refr", "Taho", "FFS", "More", "User".
    bool showTab(const QString& qsTab) override;

    // The 255-character field mask of the boxes.
    QString getStrFormat() const;
    void setStrFormat(const QString& qsMask);
    // "10", "20" or "30".
    QString getTypeDFProtocol() const;
    void setTypeDFProtocol(const QString& qsFormat);

    void setProtocol_CurSize_Inc(int nSize);
    void setProtocol_CurSize_Dec(int nSize);
    int getProtocol_CurSize() const { return m_nCurSize; }
    bool isExcessSize() const { return m_bExcess; }
    void setFormatSize();

    const QVector<ZOR_Form_Config_Set_Kite3_Tab*>& tabs() const { return m_tabs; }
    ZOR_Form_Config_Set_Kite3_Tab_User* userTab() const { return m_lpUser; }

    // What the connected terminal supports. A use setter enables or clears
    // and disables its fields; a count setter keeps the first n inputs,
    // lines or sensors of its group.
    void setDeviceUseState(bool bUse);
    void setDeviceUseModule(bool bUse);
    void setDeviceUseGSM(bool bUse);
    void setDeviceUseMotochas(bool bUse);
    void setDeviceUsePowerBLE(bool bUse);
    void setMaxCountLinesOut(int nCount);
    void setMaxCountStateIn(int nCount);
    void setMaxCountLinesIn(int nCount);
    void setMaxCountLines_AIn(int nCount);
    void setMaxCountSensorsTemp(int nCount);
    void setRS485_FLS_MaxCount(int nCount);
    void setDeviceUseCANState(bool bUse);
    void setUseDrivingQuality(bool bUse);
    void setDeviceUsePassager(bool bUse);
    void setDeviceUseTires(bool bUse);
    void setDeviceUseDisp(bool bUse);
    void setDeviceUseVAccelAxels(bool bUse);
    void setDeviceUseAinf(bool bUse);
    void setDeviceUseCamera(bool bUse);
    void setMaxCountHighPrecisionTemp(int nCount);
    void setMaxCountHighPrecisionHumidity(int nCount);
    void setDeviceUseLBS(bool bUse);
    void setDeviceUseNaviMore(bool bUse);

    // signal_Excess_Size(bool) is the base's.

private:
    void slot_currentIndexChanged_FlashFormat(int nIndex);
    // Fields (first fields of runs) that are all on or all off.
    void setFieldsUsable(std::initializer_list<int> fields, bool bUse);
    // One box per nPerBox lines, in line order: the boxes of the first nLines.
    void setLinesUsable(std::initializer_list<int> fields, int nPerBox, int nLines);
    void setFieldLimit(int nFirst, int nLimit);
    // Changes many boxes at once: the size is checked once, at the end.
    template <typename F>
    void bulk(F change);

    std::unique_ptr<Ui::ZOR_Form_Config_Set_Kite3> ui;
    ZOR_CaptionList m_versions;
    QVector<ZOR_Form_Config_Set_Kite3_Tab*> m_tabs;
    ZOR_Form_Config_Set_Kite3_Tab_User* m_lpUser = nullptr;
    int m_nCurSize = 0;
    int m_nBulk = 0;
    bool m_bExcess = false;
};

#endif
