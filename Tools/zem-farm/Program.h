#pragma once

namespace ZemFarm
{

/// Does what the command line asks for, and answers the exit code: 0 if all documents agreed, 1 if two didn't or
/// something failed, 2 if an option or a script is wrong.
int runProgram(int argumentsCount, const char* const* arguments);

} // namespace ZemFarm
