#pragma once

#include "Driver.h"
#include "Options.h"

#include <string>

namespace ZemFarm
{

/// The plan of one of the sessions of a run: session 0 is as the options say, the others vary.
/// `restCount` is how many operations are left to do.
Plan makePlan(const Options& options, unsigned long number, unsigned long restCount);

/// The options that do just the session of a plan again.
std::string printCommand(const Plan& plan);

/// Does sessions and prints what they came to. Answers whether all documents agreed.
bool runSessions(const Options& options);

/// Plays a script. Answers whether all documents agreed.
bool runScript(const Script& script, bool shrinks);

/// The shortest script that fails for the same reason: with the smallest document, and no step that could be left out.
/// Fails: `std::runtime_error` for a script that doesn't fail.
Script shrink(Script script);

} // namespace ZemFarm
