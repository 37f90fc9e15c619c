#ifndef ZOR_SIM_ARCHIVE_H
#define ZOR_SIM_ARCHIVE_H

// The --archive mode of zor-sim: writes a simulated telemetry archive.
int zorSimArchiveMain(int argc, char** argv);

#endif
