#include "zor_tmi_mapdialog.h"
#include "ui_zor_tmi_mapdialog.h"

#include "zor_tmi_texts.h"
#include "zor_tmi_tilesource.h"

ZOR_TmiMapDialog::ZOR_TmiMapDialog(QWidget* parent)
    : QDialog(parent)
    , ui(new Ui::ZOR_TmiMapDialog)
{
    ui->setupUi(this);
    setWindowTitle(zorTmiText("map_title"));
    ui->label_Explain->setText(zorTmiText("map_explain"));
    ui->label_Url->setText(zorTmiText("map_url"));
    ui->label_Attribution->setText(zorTmiText("map_attribution"));
    ui->lineEdit_Url->setPlaceholderText(QStringLiteral("https://tile.openstreetmap.org/{z}/{x}/{y}.png"));
    ui->lineEdit_Attribution->setPlaceholderText(QStringLiteral("© OpenStreetMap contributors"));
    connect(ui->buttonBox, &QDialogButtonBox::accepted, this, &ZOR_TmiMapDialog::accept);
    connect(ui->buttonBox, &QDialogButtonBox::rejected, this, &ZOR_TmiMapDialog::reject);
}

ZOR_TmiMapDialog::~ZOR_TmiMapDialog() = default;

void ZOR_TmiMapDialog::setValues(const QString& qsTemplate, const QString& qsAttribution)
{
    ui->lineEdit_Url->setText(qsTemplate);
    ui->lineEdit_Attribution->setText(qsAttribution);
}

QString ZOR_TmiMapDialog::urlTemplate() const
{
    return ui->lineEdit_Url->text().trimmed();
}

QString ZOR_TmiMapDialog::attribution() const
{
    return ui->lineEdit_Attribution->text().trimmed();
}

void ZOR_TmiMapDialog::accept()
{
    if (!ZOR_TmiTileSource::isValidTemplate(urlTemplate())) {
        ui->label_Error->setText(zorTmiText("map_bad_url"));
        return;
    }
    QDialog::accept();
}
