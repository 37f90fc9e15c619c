#include "config/zor_form_config_track_locator_blist.h"

#include "ui_zor_form_config_track_locator_blist.h"

#include "module/zor_language.h"
#include "store/zor_settingsnode.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <iterator>

namespace {

// Names of the hotspots of common phones, rows 1 to 10.
const char* const kDefaultNames[] = {
    "70mai", "galaxy", "iphone", "honor", "realme", "redmi", "vivo", "samsung", "xiaomi", "zte"};

// A network name is at most 32 bytes long.
constexpr int kMaxNameLength = 32;

// A name looks like a line of a list until it is edited: no frame, the
// list's background, no text cursor; editing shows the text box.
void showAsListLine(QLineEdit* lpEdit, bool bEditing)
{
    lpEdit->setReadOnly(!bEditing);
    lpEdit->setFrame(bEditing);
    lpEdit->setCursor(bEditing ? Qt::IBeamCursor : Qt::ArrowCursor);
    lpEdit->setStyleSheet(bEditing ? QString() : QStringLiteral("QLineEdit { background: transparent; }"));
}

void beginEdit(QLineEdit* lpEdit)
{
    showAsListLine(lpEdit, true);
    lpEdit->selectAll();
    lpEdit->setFocus();
}

} // namespace

const char* const ZOR_Form_Config_Track_Locator_BList::qsNodeName = "WIFIBLIST";

ZOR_Form_Config_Track_Locator_BList::ZOR_Form_Config_Track_Locator_BList(QWidget* parent)
    : ZOR_Form_Config(parent)
    , ui(new Ui::ZOR_Form_Config_Track_Locator_BList)
    , m_rows({{QStringLiteral("cfgsrv_015"), ZOR_RowBuilder::Label},
          {QStringLiteral("cfgsrv_038"), ZOR_RowBuilder::Text, "bm", QString()}})
{
    ui->setupUi(this);
    initForm();
    translateForm();
    setDefaultParam();
    watchEdits(this);
}

void ZOR_Form_Config_Track_Locator_BList::initForm()
{
    m_rows.build(
        ui->gridRows, nRowCount, [](int n) { return QString::number(n); }, 1,
        [this](int, QVector<QWidget*>& widgets) {
            auto edit = static_cast<QLineEdit*>(widgets[1]);
            edit->setMaxLength(kMaxNameLength);
            edit->setMinimumWidth(220);
            showAsListLine(edit, false);
            edit->installEventFilter(this);
            connect(edit, &QLineEdit::editingFinished, edit, [edit] { showAsListLine(edit, false); });
        });
}

void ZOR_Form_Config_Track_Locator_BList::translateForm()
{
    setWindowTitle(zorTr("cfgsrv_037"));
    ui->labelTitle->setText(zorTr("cfgsrv_037"));
    ui->labelHint->setText(zorTr("cfgsrv_039"));
    m_rows.translate();
}

void ZOR_Form_Config_Track_Locator_BList::setDefaultParam()
{
    m_rows.setDefaults();
    for (int r = 0; r < nRowCount && r < int(std::size(kDefaultNames)); ++r)
        nameEdit(r)->setText(QString::fromLatin1(kDefaultNames[r]));
}

QLineEdit* ZOR_Form_Config_Track_Locator_BList::nameEdit(int nIndex) const
{
    return m_rows.widgetAs<QLineEdit>(nIndex, 1);
}

void ZOR_Form_Config_Track_Locator_BList::readFormParam(CXMLWorkData* lpParent)
{
    if (auto node = ZOR_SettingsNode::openForRead(lpParent, QString::fromLatin1(qsNodeName)))
        m_rows.readAttributes(node.get());
}

void ZOR_Form_Config_Track_Locator_BList::writeFormParam(CXMLWorkData* lpParent)
{
    auto node = ZOR_SettingsNode::openForWrite(lpParent, QString::fromLatin1(qsNodeName));
    m_rows.writeAttributes(node.get());
    node->writeParameters();
}

bool ZOR_Form_Config_Track_Locator_BList::eventFilter(QObject* lpWatched, QEvent* lpEvent)
{
    auto edit = qobject_cast<QLineEdit*>(lpWatched);
    if (edit && edit->isReadOnly() && edit->isEnabled()) {
        if (lpEvent->type() == QEvent::MouseButtonDblClick) {
            beginEdit(edit);
            return true;
        }
        if (lpEvent->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(lpEvent)->key() == Qt::Key_F2) {
            beginEdit(edit);
            return true;
        }
    }
    return ZOR_Form_Config::eventFilter(lpWatched, lpEvent);
}

ZOR_Form_Config_Track_Locator_BList::~ZOR_Form_Config_Track_Locator_BList() = default;
