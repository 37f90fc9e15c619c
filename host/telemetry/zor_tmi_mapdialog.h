#ifndef ZOR_TMI_MAPDIALOG_H
#define ZOR_TMI_MAPDIALOG_H

// Asks for the map tile server: an XYZ URL template (empty: no map) and the
// attribution its terms ask to show. Refuses a template the tile source
// would not take.

#include <QDialog>

#include <memory>

namespace Ui {
class ZOR_TmiMapDialog;
}

class ZOR_TmiMapDialog : public QDialog
{
    Q_OBJECT
public:
    explicit ZOR_TmiMapDialog(QWidget* parent = nullptr);
    ~ZOR_TmiMapDialog() override;

    void setValues(const QString& qsTemplate, const QString& qsAttribution);
    QString urlTemplate() const;
    QString attribution() const;

    void accept() override;

private:
    std::unique_ptr<Ui::ZOR_TmiMapDialog> ui;
};

#endif
