#ifndef ZOR_TERMINALPROFILE_H
#define ZOR_TERMINALPROFILE_H

// What the terminal a configuration is meant for can do. The configuration
// window keeps one profile (set by hand or taken from the connected
// terminal's answers) and hands it to every form with applyProfile(); the
// command line takes the same values from its options. The defaults describe
// a one-SIM terminal with every field of the record available.

struct ZOR_TerminalProfile
{
    enum CanVariant { CanExt = 0, CanBt = 1 };

    int nSimCount = 1; // 1 or 2
    int nCanVariant = CanExt; // which list fills the additional CAN tree
    int nBluetoothSlots = 8; // Bluetooth LE sensor slots

    // Field-set limits of the protocol form, one per capability setter.
    bool bUseState = true;
    bool bUseModule = true;
    bool bUseGSM = true;
    bool bUseMotochas = true;
    bool bUsePowerBLE = true;
    int nMaxCountLinesOut = 16;
    int nMaxCountStateIn = 24;
    int nMaxCountLinesIn = 8;
    int nMaxCountLinesAIn = 8;
    int nMaxCountSensorsTemp = 8;
    int nRS485FlsMaxCount = 16;
    bool bUseCANState = true;
    bool bUseDrivingQuality = true;
    bool bUsePassager = true;
    bool bUseTires = true;
    bool bUseDisp = true;
    bool bUseVAccelAxels = true;
    bool bUseAinf = true;
    bool bUseCamera = true;
    int nMaxCountHighPrecisionTemp = 4;
    int nMaxCountHighPrecisionHumidity = 4;
    bool bUseLBS = true;
    bool bUseNaviMore = true;
};

#endif
