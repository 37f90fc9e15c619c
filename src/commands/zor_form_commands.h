#ifndef ZOR_FORM_COMMANDS_H
#define ZOR_FORM_COMMANDS_H

// The commands console: a free command line, fixed commands for the GNSS
// receiver of RAVEL terminals and for the SIM (balance, ICCID), and a log of
// every block that goes out or comes in. Created once by the module object
// and kept, hidden, after closing.
//
// The form keeps the console's operations and the state of its controls;
// what is said to the terminal is ZOR_ConsoleProtocol's business, the log
// with its find, filter and files is ZOR_Widget_Log's.

#include <QByteArray>
#include <QDialog>
#include <QString>
#include <QStringList>

class QAction;
class QTimer;
class ZOR_CommandHistory;
class ZOR_Dialog_Commands;
class ZOR_Model_Log;
class ZOR_Widget_Log;
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
    bool isDeviceConnected() const { return bConnected; }
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

    // Sends the command line every nPeriodMs, nCount times in all (0: until
    // stopped), the first at once.
    void startRepeat(int nPeriodMs, int nCount);
    void stopRepeat();
    bool isRepeating() const;
    int repeatSentCount() const { return nRepeatSent; }

    ZOR_Model_Log* logModel() const;
    ZOR_Widget_Log* logWidget() const;
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
    void slot_toggled_CheckBox_Repeat(bool bChecked);
    void slot_finished_Form(int result);

private:
    void initFixedCommands();
    void sendCommand(const QByteArray& bytes);
    void sendFreeCommand();
    void sendRepeated();
    bool confirmSend(const QString& qsCommand);
    bool commandLineKey(int nKey);
    // Saves the command history; a failure is told once until a save works.
    void saveHistory();
    // Tells the user that a file could not be used.
    void tellPathFault(const QString& qsKey, const QString& qsPath, const QString& qsReason);
    void sendCommandText(const QString& qsText);
    void updateIccIdButton();
    void updateRepeatStatus();
    void fillMacroButtons();
    void setSendEnabled(bool bEnabled);

    // Fixed commands; an empty text means "send nothing".
    QString commandCoordSystem() const;
    QString commandSatSystems() const;

    QString savedCommandText(const QString& qsName) const;
    QString savedCommandName(const QString& qsText) const;
    // Shows the command saved under this name (nothing for "").
    void selectSavedCommand(const QString& qsName);

    Ui::ZOR_Form_Commands* ui;
    ZOR_Dialog_Commands* lpDialogCommands = nullptr;
    QAction* actionSave = nullptr;
    QAction* actionSaveAs = nullptr;
    QString qsLoadedCommand;
    QString qsWindowTitle;
    ZOR_CommandHistory* lpHistory = nullptr;
    // The history file could be read (false: it is left as it is); a failed
    // save was told.
    bool bHistoryKept = true;
    bool bHistoryFailureTold = false;
    bool bConnected = false;
    QTimer* timerRepeat = nullptr;
    QString qsRepeatCommand;
    int nRepeatCount = 0;
    int nRepeatSent = 0;
};

#endif
