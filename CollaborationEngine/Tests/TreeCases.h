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
    Table,
    TallTable
};

/// An element with a text of one slot, which is named ten times as high.
TreeElement makeElementWithText(int name);

/// A list of three elements or a map of two, each with a text of one slot; for a table, two or three rows and two
/// columns, with such a cell in each crossing.
TreeDocument makeSmallDocument(TreePart part);

/// All operations that are legal in a document without dead places, on the part and on what is below it. New names and
/// values are made from `firstName` on.
std::vector<OperationUPtr> makeTreeOperations(const TreeDocument& document, TreePart part, int firstName);

/// Those of them that mark or remove something.
std::vector<OperationUPtr> makeTreeDeletions(const TreeDocument& document, TreePart part);

/// The removals of each row and each column, as the reversals of insertions are. Live or dead, they go for good.
std::vector<OperationUPtr> makeLineRemovals(const TreeTable& table);

} // namespace Zem::CollaborationEngine::Testing
