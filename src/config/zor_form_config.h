#ifndef ZOR_FORM_CONFIG_H
#define ZOR_FORM_CONFIG_H

// The base of every settings form. A form is a widget that edits one part of
// a settings document; the configuration window (and `zor-tool config`)
// treats all of them alike through these operations:
//
//   initForm()            build widgets that need code (rows, lists); once
//   translateForm()       (re)fill every caption and caption list; runs
//                         before any value is loaded, because lists are
//                         matched by caption text
//   setDefaultParam()     the form's defaults (a new configuration)
//   readFormParam(root)   load from the document; root is a cursor on the
//                         PARENT element (the document's top element in the
//                         window): the form opens its own nodes below it,
//                         reading never creates a node. A form whose page
//                         names its element (ZOR_ConfigPage::lpNode, the
//                         Technoton S6 form) gets a cursor on that element
//                         and keeps its values on it
//   writeFormParam(root)  save below root: each node created (when absent)
//                         and cleared before it is written
//   deviceConnect() / deviceDisconnect() / setFormEnabled(bool)
//   applyProfile(p)       what the terminal can do (SIM count, CAN variant,
//                         field limits...), from the window's profile
//
// A typical form is a .ui plus a ZOR_FormBinding table:
//
//   class ZOR_Form_Config_Example : public ZOR_Form_Config {
//   public:
//       explicit ZOR_Form_Config_Example(QWidget* parent = nullptr)
//           : ZOR_Form_Config(parent) { ui.setupUi(this); initForm(); translateForm(); }
//       void initForm() override {
//           m_bind.integer("speed", ui.spinSpeed, 9600)
//                 .check("use", ui.checkUse, false)
//                 .caption("type", ui.comboType, &m_types, "1");
//       }
//       void translateForm() override { m_types.fill(ui.comboType); }
//       void setDefaultParam() override { m_bind.setDefaults(); }
//       void readFormParam(CXMLWorkData* root) override { m_bind.readNode(root, "EXAMPLE"); }
//       void writeFormParam(CXMLWorkData* root) override { m_bind.writeNode(root, "EXAMPLE"); }
//   private:
//       Ui::ZOR_Form_Config_Example ui;
//       ZOR_CaptionList m_types = ZOR_CaptionList().add("1", "cfgt6_001").add("2", "cfgt6_002");
//       ZOR_FormBinding m_bind;
//   };
//
// Pages that put values into the telemetry record publish them with
// signal_UserParam_Add / signal_UserParam_Del; the window routes those to one
// ZOR_UserParamRegistry, which the field-set form reads (setUserParamRegistry).
// Forms never know each other.

#include "config/zor_userparamentry.h"

#include <QVector>
#include <QWidget>

class CXMLWorkData;
class ZOR_UserParamRegistry;
struct ZOR_TerminalProfile;

class ZOR_Form_Config : public QWidget
{
    Q_OBJECT
public:
    explicit ZOR_Form_Config(QWidget* parent = nullptr);

    virtual void initForm() { }
    virtual void translateForm() { }
    virtual void deviceConnect() { }
    virtual void deviceDisconnect() { }
    virtual void setFormEnabled(bool bEnabled) { setEnabled(bEnabled); }
    virtual void setDefaultParam() { }
    virtual void readFormParam(CXMLWorkData* lpRoot) { Q_UNUSED(lpRoot) }
    virtual void writeFormParam(CXMLWorkData* lpRoot) { Q_UNUSED(lpRoot) }

    virtual void applyProfile(const ZOR_TerminalProfile& profile) { Q_UNUSED(profile) }
    // Forms that offer user parameters (the field-set form) keep the registry;
    // the rest ignore it.
    virtual void setUserParamRegistry(ZOR_UserParamRegistry* lpRegistry) { Q_UNUSED(lpRegistry) }

    // Brings one of the form's tabs or sections to the front (the field-set
    // form's "CAN" and "User" tabs); false when the form has no such tab.
    virtual bool showTab(const QString& qsTab)
    {
        Q_UNUSED(qsTab)
        return false;
    }

    // The user parameters the form publishes now (Modbus rows, universal
    // sensor values): what a page stack withdraws and offers again when it
    // hides and shows the form.
    virtual QVector<ZOR_UserParamEntry> publishedParams() const { return {}; }

    // Emits signal_FormEdited whenever the user edits any editor below root
    // (check boxes, spin boxes, combo boxes, line edits, tree and table
    // items). Programmatic changes fire too; the window ignores those while it
    // loads (see ZOR_ConfigDocument).
    void watchEdits(QWidget* lpRoot);

signals:
    void signal_UserParam_Add(QString qsPrefix, QString qsMess, QString qsSuffix, int nSize);
    void signal_UserParam_Del(QString qsPrefix, QString qsMess, QString qsSuffix);
    void signal_FormEdited();
    // Asks the window to show another page, on one of its tabs (showTab):
    // the CAN form's buttons ask for ("protocol", "CAN") and ("protocol", "User").
    void signal_ShowPage(QString qsPageId, QString qsTab);
    // The telemetry record the form describes went over its size limit
    // (true) or came back under it (false); only the field-set form has a
    // limit, every form has the signal so the window connects them alike.
    void signal_Excess_Size(bool bExcess);
};

#endif
