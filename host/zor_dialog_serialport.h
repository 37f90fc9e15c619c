#ifndef ZOR_DIALOG_SERIALPORT_H
#define ZOR_DIALOG_SERIALPORT_H

// Asks for the serial port of the terminal and its baud rate.

#include <QDialog>
#include <memory>

namespace Ui {
class ZOR_Dialog_SerialPort;
}

class ZOR_Dialog_SerialPort : public QDialog
{
    Q_OBJECT
public:
    explicit ZOR_Dialog_SerialPort(QWidget* parent = nullptr);
    ~ZOR_Dialog_SerialPort() override;

    QString portName() const;
    qint32 baudRate() const;

private:
    std::unique_ptr<Ui::ZOR_Dialog_SerialPort> ui;
};

#endif
