#pragma once

/// What must be equal when everybody has heard of everything.

#include "DOM_Document.h"
#include "Sharing/CS_Messages.h"

#include <string>

namespace ZemFarm
{

/// How two documents differ, in a few words: "text [n34]: {|a} in place of {|b}"; empty if they don't, in their JSON
/// neither. It names the first text of which the slots or the tombstones differ, and else quotes from the JSON.
std::string findDifference(Zem::CollaborationSession::DocumentKind kind, const Zem::DOM::Document& expected,
                           const Zem::DOM::Document& actual);

/// What is wrong with a document by itself; empty if nothing is.
std::string findFault(const Zem::DOM::Document& document);

/// What is wrong with the JSON of a document, from which an equal document is to be read; empty if nothing is.
std::string findFaultOfJson(const Zem::DOM::Document& document);

/// How selections differ; empty if they don't.
std::string findDifference(const Zem::CollaborationSession::Selections& expected,
                           const Zem::CollaborationSession::Selections& actual);

} // namespace ZemFarm
