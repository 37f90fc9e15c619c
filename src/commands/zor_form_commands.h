#ifndef ZOR_FORM_COMMANDS_H
#define ZOR_FORM_COMMANDS_H

// The commands console: a free command line, fixed commands for the GNSS
// receiver of RAVEL terminals and for the SIM (balance, ICCID), and a log of
// every block that goes out or comes in. Created once by the module object
// and kept, hidden, after closing.

#include <QByteArray>
#include <QList>
#include <QDialog>
#include <QString>
#include <QStringList>

class QAction;
class QTimer;
class ZOR_CommandHistory;
class ZOR_Dialog_Commands;
class ZOR_Model_Log;
namespace Ui {
class ZOR_Form_Commands;
}

class ZOR_Form_Commands : public QDialog
{
    Q_OBJECT
public:
    explicit ZOR_Form_Commands(QWidget* parent = nullptr);
    ~ZOR_Form_Commands() override;

    void showForm();
    void initForm();
    void translateForm();
    QString getWindowTitle() const { return qsWindowTitle; }

    void deviceConnect();
    void deviceDisconnect();
    void deviceReceive(QByteArray* data);
    void deviceReceive(const QString& text);

    // One log row: direction 0 "OUT", 1 "IN", anything else none.
    void setData(int direction, const QByteArray& data);
    void setReceiveCommand(QByteArray* data);

    // The free command line as bytes: "\hh" is the byte hh, "\\" one
    // backslash; anything else, and a malformed escape, goes as typed.
    static QByteArray getUniCommand(const QString& qsCommand);
    static QString getStrVisibleData(const QByteArray* data);
    static QString getIccIdType(const QString& qsField);

    // Link to the saved command list.
    void setListCommands(const QStringList& names);
    void setParamCommandType(const QString& qsName);
    void setTypeCommandType(const QString& qsText);
    void saveCommandAsNew();

    ZOR_Model_Log* logModel() const { return modelLog; }
    ZOR_CommandHistory* commandHistory() const { return lpHistory; }
    ZOR_Dialog_Commands* dialogCommands() const { return lpDialogCommands; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void slot_currentIndexChanged_ComboBox_ListCommands(int index);
    void slot_textChanged_LineEdit_Cmd_Any(const QString& text);
    void slot_triggered_Action_Save();
    void slot_triggered_Action_SaveAs();
    void slot_pressed_ToolButton_ListCommands_Edit();
    void slot_ListCommands_Change();
    void slot_toggled_CheckBox_IccId_Sim_1(bool bChecked);
    void slot_toggled_CheckBox_IccId_Sim_2(bool bChecked);
    void slot_finished_Form(int result);

private:
    void sendCommand(const QByteArray& bytes);
    void sendFreeCommand();
    bool commandLineKey(int nKey);
    // Tells the user that a file could not be used.
    void tellPathFault(const QString& qsKey, const QString& qsPath, const QString& qsReason);
    void sendCommandText(const QString& qsText);
    void scrollLogLater();
    void showNewLogRows();
    void followLog();
    void initLogView();
    void updateDetail();
    QList<int> selectedLogRows() const;
    void copyLogRows();
    void copyLogRowsHex();
    void saveLogAs();
    void showFindBar();
    void hideFindBar();
    void findInLog(bool bForward);
    void applyLogFilter();
    void slot_valueChanged_LogScrollBar(int value);
    void shiftLogRows(int nRows);
    void slot_clicked_ToolButton_NewRows();
    void updateIccIdButton();

    // Fixed commands; an empty text means "send nothing".
    QString commandCoordSystem() const;
    QString commandSatSystems() const;
    QString commandNmeaRate() const;
    QString commandIccId() const;

    QString savedCommandText(const QString& qsName) const;
    QString savedCommandName(const QString& qsText) const;
    // Shows the command saved under this name (nothing for "").
    void selectSavedCommand(const QString& qsName);

    Ui::ZOR_Form_Commands* ui;
    ZOR_Model_Log* modelLog = nullptr;
    ZOR_Dialog_Commands* lpDialogCommands = nullptr;
    QAction* actionSave = nullptr;
    QAction* actionSaveAs = nullptr;
    QString qsLoadedCommand;
    QString qsWindowTitle;
    QTimer* timerScroll = nullptr;
    ZOR_CommandHistory* lpHistory = nullptr;
    QAction* actionCopy = nullptr;
    QAction* actionCopyHex = nullptr;
    QAction* actionFind = nullptr;
    QAction* actionSaveLog = nullptr;
    QAction* actionDetail = nullptr;
    bool bFollowLog = true;
    // The history file could be read (false: it is left as it is); a failed
    // save was told.
    bool bHistoryKept = true;
    bool bHistoryFailureTold = false;
    int nRowsSeen = 0;
    // The log's scroll position while rows come or go above it; -1 else.
    int nLogShiftFrom = -1;
    int logFilterDirection = -1;
    QString qsLogFilterText;
};

#endif
