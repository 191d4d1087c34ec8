#pragma once

/// Positions in a text: a place of the plane together with the part of the text that stands there.

#include "PlaneIndexUtils/DClb_PlanePlace.h"
#include "TextWrappers/DClb_BlockWrappers.h"

#include "Util_Assert.h"

#include <boost/variant.hpp>

#include <functional>

namespace Zem::DOMCollaboration
{

/// Positions refer to the document's objects.
struct DOMTraits
{
    template<bool isConst>
    using BlockCollection = ConstIf<isConst, DOM::Blocks>&;
    template<bool isConst>
    using Block = std::reference_wrapper<ConstIf<isConst, DOM::Block>>;
    template<bool isConst>
    using Paragraph = std::reference_wrapper<ConstIf<isConst, DOM::Paragraph>>;
    template<bool isConst>
    using Run = std::reference_wrapper<ConstIf<isConst, DOM::Run>>;
    template<bool isConst>
    using TextRun = std::reference_wrapper<ConstIf<isConst, DOM::TextRun>>;

    template<class T>
    static std::reference_wrapper<const T> asConst(std::reference_wrapper<T> reference)
    {
        return reference.get();
    }
};

/// Positions refer to wrappers, through which the text can be changed.
struct DOMWrappersTraits
{
    template<bool isConst>
    using BlockCollection = const GenericBlockCollectionWrapper<isConst>&;
    template<bool isConst>
    using Block = GenericAtomicBlockWrapper<isConst>;
    template<bool isConst>
    using Paragraph = GenericParagraphWrapper<isConst>;
    template<bool isConst>
    using Run = GenericAtomicRunWrapper<isConst>;
    template<bool isConst>
    using TextRun = GenericTextRunWrapper<isConst>;

    template<class Wrapper>
    static auto asConst(const Wrapper& wrapper)
    {
        return wrapper.asConst();
    }
};

/// The index just past the last element.
template<bool isConst, class Traits>
struct GenericTextEndPosition
{
};

template<bool isConst, class Traits>
struct GenericAtomicBlockPosition
{
    unsigned long _blockIndex;
    typename Traits::template Block<isConst> _block;
};

template<bool isConst, class Traits>
struct GenericParaTagPosition
{
    unsigned long _blockIndex;
    typename Traits::template Paragraph<isConst> _paragraph;
};

template<bool isConst, class Traits>
struct GenericParaMarkPosition
{
    unsigned long _blockIndex;
    typename Traits::template Paragraph<isConst> _paragraph;
};

template<bool isConst, class Traits>
struct GenericAtomicRunPosition
{
    unsigned long _blockIndex;
    typename Traits::template Paragraph<isConst> _paragraph;
    unsigned long _runIndex;
    typename Traits::template Run<isConst> _run;
};

template<bool isConst, class Traits>
struct GenericTextRunTagPosition
{
    unsigned long _blockIndex;
    typename Traits::template Paragraph<isConst> _paragraph;
    unsigned long _runIndex;
    typename Traits::template TextRun<isConst> _textRun;
};

/// One byte of a text run; `_byteIndex` counts the run's bytes.
template<bool isConst, class Traits>
struct GenericCharPosition
{
    unsigned long _blockIndex;
    typename Traits::template Paragraph<isConst> _paragraph;
    unsigned long _runIndex;
    typename Traits::template TextRun<isConst> _textRun;
    unsigned long _byteIndex;
};

template<bool isConst, class Traits>
using GenericPosition =
    boost::variant<GenericTextEndPosition<isConst, Traits>, GenericAtomicBlockPosition<isConst, Traits>,
                   GenericParaTagPosition<isConst, Traits>, GenericParaMarkPosition<isConst, Traits>,
                   GenericAtomicRunPosition<isConst, Traits>, GenericTextRunTagPosition<isConst, Traits>,
                   GenericCharPosition<isConst, Traits>>;

/// As `GenericPosition`, with a blank in front that says that the index lies beyond the end of the text.
template<bool isConst, class Traits>
using GenericPositionOpt =
    boost::variant<boost::blank, GenericTextEndPosition<isConst, Traits>, GenericAtomicBlockPosition<isConst, Traits>,
                   GenericParaTagPosition<isConst, Traits>, GenericParaMarkPosition<isConst, Traits>,
                   GenericAtomicRunPosition<isConst, Traits>, GenericTextRunTagPosition<isConst, Traits>,
                   GenericCharPosition<isConst, Traits>>;

namespace VariantOptDetails
{

/// A variant of fewer alternatives. Fails: "Unexpected type in the source variant" when the target doesn't have what
/// the source holds.
template<class Target, class Source>
Target convertVariant(const Source& source)
{
    return boost::apply_visitor(
        [](const auto& alternative) -> Target
        {
            if constexpr (std::is_constructible_v<Target, decltype(alternative)>)
            {
                return Target(alternative);
            }
            else
            {
                ZEM_FAIL("Unexpected type in the source variant");
            }
        },
        source);
}

} // namespace VariantOptDetails

} // namespace Zem::DOMCollaboration
