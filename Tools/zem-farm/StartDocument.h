#pragma once

#include "Random.h"
#include "Script.h"

#include "DOM_Document.h"
#include "DOM_Run.h"

#include <functional>
#include <string>

namespace ZemFarm
{

/// A random document, the same for the same setup but for the identities of tables. It has sound texts, tables with
/// merges and dead lines, shapes, fields, scripts, styles, and dead slots.
Zem::DOM::Document makeStartDocument(const Setup& setup);

/// The same of paragraphs of text alone, one at least, the characters of which `replace` puts in place of a string.
Zem::DOM::Document makeJudgedDocument(const Setup& setup,
                                      const std::function<std::string(const std::string&)>& replace);

/// An atomic block for a text of such a document that lies at a depth.
std::unique_ptr<Zem::DOM::Block> makeAtomicBlock(const Setup& setup, const Zem::DOM::SharedObjectFactory& factory,
                                                 Random& random, unsigned long depth);

std::unique_ptr<Zem::DOM::Run> makeAtomicRun(const Zem::DOM::SharedObjectFactory& factory, Random& random);

} // namespace ZemFarm
