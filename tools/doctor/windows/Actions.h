// What the doctor does on a machine.
#pragma once

#include "tools/doctor/CommandLine.h"
#include "tools/doctor/Facts.h"

namespace qva::doctor {

/// Gathers everything: the machine's facts here, those of each bitness by its part.
MachineFacts Examine();

// Each of these tells what it did; result: 0 when all of it was done, else 2.

/// Puts right what can be put right for the user.
int Repair(const MachineFacts& facts, Language language);
/// Switches the log of calls on, into the file or the usual one, or off.
int SwitchLog(bool on, const std::u16string& file, Language language);
/// Switches the demo host on or off, in each bitness.
int SwitchDemo(bool on, Language language);

/// Carries out what another process of the doctor asks this one for, and writes the answer.
void RunPart(const CommandLine& line);

}  // namespace qva::doctor
