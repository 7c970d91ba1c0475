#pragma once
#include <istream>
#include <stdexcept>
#include <string>

#include "sim/sim_vehicle.h"

namespace ketrel::sim {

// A vehicle file that could not be read; the text names the line.
class VehicleFileError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// What a vehicle file sets up: the vehicle and the converter's firmware text.
struct SimSetup {
    SimVehicle vehicle;
    std::string firmware = "1.23";
};

// Reads a vehicle file. The format is one setting per line, a keyword and its values
// separated by blanks; "#" starts a comment; hex numbers have no prefix.
//
//   protocol   J1850-VPW | J1850-PWM | ISO9141 | ISO14230
//   vin        1KTRL23T5SM000417
//   keybytes   08 08               key bytes of a K-line wake-up
//   firmware   1.23                the converter's version text
//   ambient    18                  engine profile: start temperature, C
//   operating  90                  coolant temperature once warm, C
//   warmup     300                 seconds until the coolant is nearly warm
//   idle-rpm   750
//   idle-time  20                  seconds of idling before the first drive cycle
//   cruise     60                  km/h of the cruise part of a cycle
//   ltft       2.3                 long-term fuel trim, %
//   fuel-level 62                  %
//   displacement 2.0               litres, for the air flow
//   freeze-at  95                  engine seconds of the freeze-frame snapshot
//   ignition   on | off
//
//   ecu 10 engine                  a module: address in hex and a name; the lines below,
//                                  up to the next "ecu", belong to it
//   mode1      01 04 05 0C 0D      Mode 01 PIDs it supports (bitmap PIDs follow from these)
//   mode2      02 05 0C            Mode 02 PIDs of its freeze frame
//   stored     P0301 P0420         stored trouble codes
//   pending    P0171
//   freeze     P0301               the code that stored the freeze frame
//   mil        on | off
//   fix        0C 1A F8            a Mode 01 PID held at these data bytes
//   fix-freeze 0C 0F A0            a Mode 02 PID held at these data bytes
//   monitors   07 65 00            bytes B, C and D of PID 01
//   obd        01                  PID 1C
//   o2test     01 1 7F 10 20       a Mode 05 oxygen-sensor test result: test id, sensor
//                                  (1 to 8), value, minimum, maximum; ids above 20 are the
//                                  maker's own, and the support answers follow from these
//   mode6      01 11 0123 0200     a Mode 06 result: test id, component (bit 7: the limit is
//                                  a minimum), value and limit; several lines for one id
//                                  give one message per component, in file order
//   mode6-support E0 00 00 00 03   a Mode 06 support bitmap held as given (else from the ids)
//
// A file without an "ecu" line gets no modules; settings of a module before any "ecu" line
// are an error.
SimSetup ReadVehicleFile(std::istream& in);
// Reads the file at `path`; VehicleFileError if it can't be opened or read.
SimSetup LoadVehicleFile(const std::string& path);

}  // namespace ketrel::sim
