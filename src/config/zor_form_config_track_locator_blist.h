#ifndef ZOR_FORM_CONFIG_TRACK_LOCATOR_BLIST_H
#define ZOR_FORM_CONFIG_TRACK_LOCATOR_BLIST_H

// "Черный список точек доступа WiFi": 12 access-point names the locator
// ignores (phones sharing their connection move with the vehicle and would
// spoil a Wi-Fi position), kept as "bm1" ... "bm12" in the node "WIFIBLIST"
// below the parent element. A row is changed by double-clicking it (or F2);
// Enter or leaving the row ends the edit. A new configuration gets the
// common phone hotspot names; a stored list is taken as it is, empty rows
// included, so a name the user removed never comes back.

#include "config/zor_form_config.h"
#include "config/zor_rowbuilder.h"

#include <memory>

class QLineEdit;

namespace Ui {
class ZOR_Form_Config_Track_Locator_BList;
}

class ZOR_Form_Config_Track_Locator_BList : public ZOR_Form_Config
{
    Q_OBJECT
public:
    static constexpr int nRowCount = 12;
    static const char* const qsNodeName;

    explicit ZOR_Form_Config_Track_Locator_BList(QWidget* parent = nullptr);
    ~ZOR_Form_Config_Track_Locator_BList() override;

    void initForm() override;
    void translateForm() override;
    void setDefaultParam() override;
    void readFormParam(CXMLWorkData* lpParent) override;
    void writeFormParam(CXMLWorkData* lpParent) override;

    QLineEdit* nameEdit(int nIndex) const;

protected:
    bool eventFilter(QObject* lpWatched, QEvent* lpEvent) override;

private:
    std::unique_ptr<Ui::ZOR_Form_Config_Track_Locator_BList> ui;
    ZOR_RowBuilder m_rows;
};

#endif
