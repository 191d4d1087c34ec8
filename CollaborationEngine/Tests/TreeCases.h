#pragma once

/// Small documents of one kind of node each, and all operations on them.

#include "TreeModel.h"

namespace Zem::CollaborationEngine::Testing
{

/// The part of a document that a case is about.
enum class TreePart
{
    List,
    Map,
    Table
};

/// Two elements, each with a text of one slot; for a table, two rows and two columns with a cell in each crossing.
TreeDocument makeSmallDocument(TreePart part);

/// All operations that are legal in a document without dead places, on the part and on what is below it. New names and
/// values are made from `firstName` on.
std::vector<OperationUPtr> makeTreeOperations(const TreeDocument& document, TreePart part, int firstName);

/// Those of them that remove something.
std::vector<OperationUPtr> makeTreeDeletions(const TreeDocument& document, TreePart part);

} // namespace Zem::CollaborationEngine::Testing
