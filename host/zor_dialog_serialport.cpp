#include "zor_dialog_serialport.h"
#include "ui_zor_dialog_serialport.h"

#include <QSerialPortInfo>

ZOR_Dialog_SerialPort::ZOR_Dialog_SerialPort(QWidget* parent)
    : QDialog(parent)
    , ui(new Ui::ZOR_Dialog_SerialPort)
{
    ui->setupUi(this);
    // Pseudo-terminals (zor-sim) are not listed; their path can be typed.
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        ui->comboBox_Port->addItem(info.systemLocation());
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
