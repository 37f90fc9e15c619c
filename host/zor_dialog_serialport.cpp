#include "zor_dialog_serialport.h"
#include "ui_zor_dialog_serialport.h"

#include "zor_host_texts.h"

#include <QDir>
#include <QSerialPortInfo>

ZOR_Dialog_SerialPort::ZOR_Dialog_SerialPort(QWidget* parent)
    : QDialog(parent)
    , ui(new Ui::ZOR_Dialog_SerialPort)
{
    ui->setupUi(this);
    setWindowTitle(zorHostText("port_title"));
    ui->label_Port->setText(zorHostText("port_port"));
    ui->label_Baud->setText(zorHostText("port_baud"));
    QStringList ports;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        ports << info.systemLocation();
    // Pseudo-terminals too: zor-sim and socat serve a terminal on one, and
    // the serial port list leaves them out.
    const QDir pts(QStringLiteral("/dev/pts"));
    for (const QString& qsName : pts.entryList(QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
        bool bNumber = false;
        qsName.toInt(&bNumber);
        if (bNumber && !ports.contains(pts.filePath(qsName)))
            ports << pts.filePath(qsName);
    }
    ui->comboBox_Port->addItems(ports);
    for (qint32 nBaud : QSerialPortInfo::standardBaudRates())
        ui->comboBox_Baud->addItem(QString::number(nBaud));
    ui->comboBox_Baud->setCurrentText(QStringLiteral("115200"));
}

ZOR_Dialog_SerialPort::~ZOR_Dialog_SerialPort() = default;

QString ZOR_Dialog_SerialPort::portName() const
{
    return ui->comboBox_Port->currentText().trimmed();
}

qint32 ZOR_Dialog_SerialPort::baudRate() const
{
    const qint32 nBaud = ui->comboBox_Baud->currentText().toInt();
    return nBaud > 0 ? nBaud : 115200;
}
