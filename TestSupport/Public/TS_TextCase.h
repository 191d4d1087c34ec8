#pragma once

/// Cases of operations on a text, three lines each, on which every law is checked.

#include "TS_MirrorObserver.h"
#include "TS_TextNotation.h"

#include "CE_ListMultirangeOperation.h"
#include "DClb_DocumentOperationExecutor.h"
#include "DOMNodeAdapters/DClb_BlocksAdapter.h"
#include "DOM_Document.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

namespace Zem::TestSupport
{

/// The address of the text of a detached piece of text, and of a text document's main text.
const CollaborationEngine::OperationNodeAddress& getTextAddress();

/// One nested operation of a case: from where on, in slots, and what, in the notation.
struct Piece
{
    unsigned long _slot;
    std::string_view _elements;
};

/// One nested range of a case, in slots: [begin, end).
struct Stretch
{
    unsigned long _begin;
    unsigned long _end;
};

/// Operations on the text at `getTextAddress`. Pieces and stretches stand from the highest to the lowest.
CollaborationEngine::OperationUPtr insert(std::initializer_list<Piece> pieces);
CollaborationEngine::OperationUPtr insert(unsigned long slot, std::string_view elements);
CollaborationEngine::OperationUPtr mark(std::initializer_list<Stretch> stretches);
CollaborationEngine::OperationUPtr mark(unsigned long begin, unsigned long end);
CollaborationEngine::OperationUPtr restore(std::initializer_list<Piece> pieces);
CollaborationEngine::OperationUPtr restore(unsigned long slot, std::string_view elements);

/// The operation in one line: its kind, and each nested range with its elements, such as "insert 3:x 0:{}"; "empty" for
/// an `EmptyOperation`.
std::string print(const CollaborationEngine::Operation& operation);

/// A detached text, and operations on it. After each operation these laws are checked: what was told to an observer
/// gives the same tree; what happened can be taken back to exactly the text before, and done again to exactly the text
/// after, unchanged; the text reads back from its JSON; its invariants hold.
class TextCase
{
public:
    explicit TextCase(std::string_view notation);
    ~TextCase();

    /// Executes `operation`, and checks every law.
    TextCase& after(CollaborationEngine::OperationUPtr operation);

    /// Expects the text, dead slots in any notation.
    TextCase& is(std::string_view notation);

    /// Expects that the last operation was executed as it stands.
    TextCase& isUnchanged();

    /// Expects that the last operation was executed as another one, printed as `operation`.
    TextCase& isChangedTo(std::string_view operation);

    /// Expects that the last operation was refused.
    TextCase& isRefused();

    const DOM::TextWithTombstones& getText() const
    {
        return _text;
    }

    /// What really happened last.
    const CollaborationEngine::Operation& getHappened() const
    {
        return *_happened;
    }

    CollaborationEngine::OperationExecutor& getExecutor()
    {
        return *_executor;
    }

private:
    void checkReversal(const DOM::TextWithTombstones& before);
    void checkText() const;

    DOM::Document _document;
    DOM::TextWithTombstones _text;
    std::shared_ptr<MirrorObserver> _mirror;
    std::unique_ptr<DOMCollaboration::DocumentOperationExecutor> _executor;
    CollaborationEngine::OperationUPtr _happened;
    bool _isChanged = false;
};

} // namespace Zem::TestSupport
