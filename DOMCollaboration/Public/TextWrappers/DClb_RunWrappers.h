#pragma once

/// Views over the runs of a paragraph, and over the bytes of a text run, through which every change of them goes: each
/// does the change first and then tells the observer. `isReadonly` views have no operation that changes anything.
/// Views are a few pointers and indices, made on the stack for a moment; a change of the text makes them invalid.

#include "TextWrappers/DClb_InPlacePolymorphic.h"
#include "TextWrappers/DClb_TextNotificationTarget.h"
#include "TextWrappers/DClb_WrapperImpl.h"

#include "CU_Index.h"
#include "CU_IndexRange.h"
#include "DOM_Runs.h"

#include "Util_Clonable.h"
#include "Util_ConstIf.h"
#include "Util_Export.h"
#include "Util_TypeList.h"
#include "Util_Visitor.h"

#include <string>

namespace Zem::DOMCollaboration
{

using CollaborationUtils::IndexExcludingTombstones;
using CollaborationUtils::IndexRange;

template<bool isReadonly>
class GenericAtomicRunWrapper;
template<bool isReadonly>
class GenericTextRunWrapper;

/// The bytes of a text run. Indices are bytes of the run.
template<bool isReadonly>
class ZEM_EXPORT GenericTextWrapper
{
public:
    using TextRun = ConstIf<isReadonly, DOM::TextRun>;

    GenericTextWrapper(TextRun& textRun, const TextNotificationTarget& target, unsigned long blockIndex,
                       unsigned long runIndex)
        : _textRun(&textRun)
        , _target(&target)
        , _blockIndex(blockIndex)
        , _runIndex(runIndex)
    {
    }

    unsigned long getSize() const
    {
        return _textRun->getText().size();
    }

    GenericTextWrapper<true> asConst() const
    {
        return GenericTextWrapper<true>(*_textRun, *_target, _blockIndex, _runIndex);
    }

    DOM::NativeNodeAddress getAddressToRun() const;

    /// Inserts `text` at byte `index`. Cost: the bytes behind the index, and `text`.
    /// Fails: "index <= getSize()"; "count > UnsignedIndex{0}" when there is nothing to insert; `std::bad_alloc`, and
    /// the run keeps its text.
    void insertElements(const std::string& text, unsigned long index) requires(!isReadonly);

    /// Takes the bytes of `range` out and gives them back. Fails: "range.getEnd() <= getSize()"; `std::bad_alloc`, and
    /// the run keeps its text.
    std::string removeElements(IndexRange<unsigned long> range) requires(!isReadonly);

private:
    TextRun* _textRun;
    const TextNotificationTarget* _target;
    unsigned long _blockIndex;
    unsigned long _runIndex;
};

/// The base of the two kinds of view over one run.
template<bool isReadonly>
class GenericRunWrapper : public Clonable<GenericRunWrapper<isReadonly>>
{
public:
    using VisitorType = Visitor<TypeList<GenericAtomicRunWrapper<isReadonly>, GenericTextRunWrapper<isReadonly>>>;
    using ConstVisitorType =
        Visitor<TypeList<const GenericAtomicRunWrapper<isReadonly>, const GenericTextRunWrapper<isReadonly>>>;

    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;
};

/// A view over an atomic run. It knows no observer, since an atomic run is never changed through a view.
template<bool isReadonly>
class GenericAtomicRunWrapper final
    : public WrapperImpl<GenericAtomicRunWrapper<isReadonly>, GenericRunWrapper<isReadonly>>
{
public:
    using Run = ConstIf<isReadonly, DOM::Run>;

    explicit GenericAtomicRunWrapper(Run& run)
        : _run(&run)
    {
    }

    Run& getRun() const
    {
        return *_run;
    }

    GenericAtomicRunWrapper<true> asConst() const
    {
        return GenericAtomicRunWrapper<true>(*_run);
    }

private:
    Run* _run;
};

/// A view over a text run.
template<bool isReadonly>
class GenericTextRunWrapper final : public WrapperImpl<GenericTextRunWrapper<isReadonly>, GenericRunWrapper<isReadonly>>
{
public:
    using TextRun = ConstIf<isReadonly, DOM::TextRun>;

    GenericTextRunWrapper(TextRun& textRun, const TextNotificationTarget& target, unsigned long blockIndex,
                          unsigned long runIndex)
        : _textRun(&textRun)
        , _target(&target)
        , _blockIndex(blockIndex)
        , _runIndex(runIndex)
    {
    }

    TextRun& getTextRun() const
    {
        return *_textRun;
    }

    GenericTextWrapper<isReadonly> getText() const
    {
        return GenericTextWrapper<isReadonly>(*_textRun, *_target, _blockIndex, _runIndex);
    }

    GenericTextRunWrapper<true> asConst() const
    {
        return GenericTextRunWrapper<true>(*_textRun, *_target, _blockIndex, _runIndex);
    }

private:
    TextRun* _textRun;
    const TextNotificationTarget* _target;
    unsigned long _blockIndex;
    unsigned long _runIndex;
};

/// The view over one run, of whichever kind.
template<bool isReadonly>
using RunWrapperValue = InPlacePolymorphic<GenericRunWrapper<isReadonly>, GenericAtomicRunWrapper<isReadonly>,
                                           GenericTextRunWrapper<isReadonly>>;

/// The runs of a paragraph. Indices are runs of the paragraph.
template<bool isReadonly>
class ZEM_EXPORT GenericRunCollectionWrapper
{
public:
    using Runs = ConstIf<isReadonly, DOM::Runs>;

    GenericRunCollectionWrapper(Runs& runs, const TextNotificationTarget& target, unsigned long blockIndex)
        : _runs(&runs)
        , _target(&target)
        , _blockIndex(blockIndex)
    {
    }

    unsigned long getSize() const
    {
        return _runs->size();
    }

    /// Fails: "index < size()"; "plainPtr" on a null entry.
    RunWrapperValue<isReadonly> getElement(unsigned long index) const;

    DOM::NativeNodeAddress makeAddressToPara() const;

    /// Fails: "index <= runs.size()"; "count > UnsignedIndex{0}" when there is nothing to insert.
    void insertElements(DOM::Runs runs, unsigned long index) requires(!isReadonly);

    /// Takes the runs of `range` out and gives them back. Fails: "range.getEnd() <= runs.size()".
    DOM::Runs removeElements(IndexRange<unsigned long> range) requires(!isReadonly);

    GenericRunCollectionWrapper<true> asConst() const
    {
        return GenericRunCollectionWrapper<true>(*_runs, *_target, _blockIndex);
    }

private:
    Runs* _runs;
    const TextNotificationTarget* _target;
    unsigned long _blockIndex;
};

extern template class GenericTextWrapper<false>;
extern template class GenericRunCollectionWrapper<false>;

} // namespace Zem::DOMCollaboration
