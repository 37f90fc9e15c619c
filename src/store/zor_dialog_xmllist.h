#ifndef ZOR_DIALOG_XMLLIST_H
#define ZOR_DIALOG_XMLLIST_H

// Editor of a list that ships with a default file and may be extended by the
// user. The default file is never written; the user's own records live in a
// second file, "<name>_user.xml", beside it in a build tree and below the
// user's data folder otherwise (appUserDataDirectory()). Both are UTF-8 XML: a root
// element with one empty element per record, one attribute per field.
//
// Column 0 of the tree marks the row (number, default rows greyed and
// locked); the fields occupy the columns from 1 on, in field order.
//
// A subclass keeps the records in its own type through appendRecord() /
// clearRecords() and tunes the behaviour through the other virtual hooks.

#include "store/zor_xmllistfile.h"

#include <QDialog>
#include <QList>
#include <QMessageBox>
#include <QStringList>
#include <QVector>

#include <functional>

class QTreeWidget;
class QTreeWidgetItem;
namespace Ui {
class ZOR_Dialog_XmlList;
}

struct ZOR_XmlListField
{
    QString qsAttribute; // attribute name in the file
    QString qsCaptionKey; // language key of the column caption
};

class ZOR_Dialog_XmlList : public QDialog
{
    Q_OBJECT

public:
    // A user's file larger than this is not read (and so kept aside).
    static constexpr qint64 nMaxFileBytes = ZOR_XmlListFile::nMaxFileBytes;

    ZOR_Dialog_XmlList(const QString& qsFileSubPath, const QString& qsRootElement, const QString& qsRecordElement,
        const QVector<ZOR_XmlListField>& fields, QWidget* parent = nullptr);
    ~ZOR_Dialog_XmlList() override;

    // Clears the records and the tree and reads the default file, then the
    // user's. A missing file is an empty part of the list. Returns false when
    // the user's file exists but could not be read whole, is larger than
    // nMaxFileBytes or is a list of another kind (another root element, or
    // only elements other than records); such a file is copied aside as
    // ".bad", with the user told, before it is first written over.
    bool readFile();
    // Validates, then writes the user's rows of the tree and reads the files
    // again. Emits signal_List_Change on success.
    bool writeFile();
    void reload();
    // Rereads the files when programLanguage() is not the one they were read in.
    void reloadIfLanguageChanged();
    void showForm();
    virtual void translateForm();

    // Moves the selected row up (negative) or down (positive) by one.
    void moveSelectedItem(int nDirection);
    // value itself when the column does not hold it yet, else "value 2",
    // "value 3"... whichever is free first.
    QString uniqueValue(int nColumn, const QString& qsValue) const;
    bool isUniqueValue(int nColumn, const QString& qsValue) const;
    // False, after telling the user, when a value occurs twice in the column;
    // qsMessage says what must be unique.
    bool validateUniqueColumn(int nColumn, const QString& qsMessage);

    QString localizedFileSubPath(const QString& qsSuffix) const;
    QString defaultFilePath() const;
    QString userFilePath() const;

    bool isDefaultItem(const QTreeWidgetItem* item) const;
    QTreeWidget* treeWidget() const;
    int fieldCount() const { return vFields.size(); }

    // Every message box of the list dialogs (and of the console's list
    // handling) goes through ask(): the buttons are given as texts and the
    // index of the pressed one is returned (-1 when closed otherwise). Tests
    // install an answerer so that nothing modal ever waits for a hand.
    using Answerer = std::function<int(
        QMessageBox::Icon, const QString& qsTitle, const QString& qsText, const QStringList& buttons)>;
    static int ask(QWidget* parent, QMessageBox::Icon icon, const QString& qsTitle, const QString& qsText,
        const QStringList& buttons);
    static void setAnswerer(const Answerer& answerer);
    // The same for a line of text: false when cancelled, else qsValue holds
    // the text entered (it comes in as the proposal).
    using TextAnswerer = std::function<bool(const QString& qsTitle, const QString& qsLabel, QString& qsValue)>;
    static bool askText(QWidget* parent, const QString& qsTitle, const QString& qsLabel, QString& qsValue);
    static void setTextAnswerer(const TextAnswerer& answerer);

public slots:
    // Closing without saving drops the edits of the tree.
    void reject() override;

signals:
    void signal_List_Change();

protected:
    // Hooks; the base versions accept everything and do nothing.
    virtual void fixupRecord(QStringList& fields);
    virtual void initNewItem(QTreeWidgetItem* item);
    virtual bool validateBeforeSave();
    // Key under which two records count as the same; "" never clashes.
    virtual QString dedupKey(const QStringList& fields);
    // Question asked before a row is deleted; "" deletes without asking.
    virtual QString confirmDeleteText();
    virtual void appendRecord(const QStringList& fields, bool isDefault);
    virtual void clearRecords();
    virtual void prepareSaveRecord(QStringList& fields);
    virtual bool shouldSkipRow(QTreeWidgetItem* item);

    // Writes these records as the user's file (the atomic, bad-file-keeping
    // writer every path uses). A failure is told to the user and leaves the
    // previous file as it was.
    bool writeRecords(const QList<QStringList>& records);
    QTreeWidgetItem* addTreeRow(const QStringList& fields, bool isDefault);
    // Adds a row the user may edit, filled by initNewItem, selected.
    QTreeWidgetItem* addNewItem();
    void clearTree();
    QStringList rowFields(const QTreeWidgetItem* item) const;
    QString fileSubPath() const { return qsFileSubPath; }

    // Language keys of the window title and the buttons; a subclass with
    // texts of its own sets them before translateForm() runs.
    struct CaptionKeys
    {
        const char* lpTitle = "lst_001";
        const char* lpSave = "lst_002";
        const char* lpCancel = "lst_003";
        const char* lpAdd = "lst_004";
        const char* lpDel = "lst_005";
        const char* lpUp = "lst_006";
        const char* lpDown = "lst_007";
    };
    void setCaptionKeys(const CaptionKeys& keys) { m_keys = keys; }

protected slots:
    void slot_pressed_Btn_Add();
    void slot_pressed_Btn_Del();
    void slot_pressed_Btn_Up();
    void slot_pressed_Btn_Down();
    void slot_pressed_Btn_Save();
    void slot_pressed_Btn_Cancel();

private:
    QList<QStringList> readRecords(const QString& qsPath, bool& bOk) const;
    ZOR_XmlListFile listFile() const;
    bool keepBadUserFile();
    void renumberRows();
    void updateButtons();

    Ui::ZOR_Dialog_XmlList* ui;
    CaptionKeys m_keys;
    QString qsFileSubPath;
    QString qsRootElement;
    QString qsRecordElement;
    QVector<ZOR_XmlListField> vFields;
    QString qsReadLanguage;
    // The user's file could not be parsed: it is copied aside before it is
    // first written over.
    bool bUserFileBad = false;
};

#endif
