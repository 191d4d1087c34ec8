#pragma once

#include "Script.h"
#include "Session.h"

#include <memory>
#include <string>

namespace ZemFarm
{

/// Does all steps, and settles in the end. Answers the failure, if there is one.
std::unique_ptr<Failure> findFailure(const Script& script);

/// The script with comments that tell what each step did, and how it failed.
std::string annotate(const Script& script);

} // namespace ZemFarm
