#pragma once

/// What the wrappers of blocks, runs and bytes do alike.

#include "TextWrappers/DClb_TextNotificationTarget.h"

#include "CU_IndexRange.h"

#include "Util_Assert.h"
#include "Util_ReadonlyVector.h"

#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace Zem::DOMCollaboration::WrapperDetails
{

/// Calls `tell` with the observer, if that is still alive.
template<class Tell>
void notify(const TextNotificationTarget& target, Tell&& tell)
{
    const std::shared_ptr<TextWithTombstonesChangedObserver> observer = target._observer.lock();
    if (!observer)
    {
        return;
    }
    try
    {
        tell(*observer);
    }
    catch (...)
    {
        if (!target._failure)
        {
            throw;
        }
        *target._failure = *target._failure ? *target._failure : std::current_exception();
    }
}

inline void requireIndex(unsigned long index, unsigned long count)
{
    const auto size = [count] { return count; };
    ZEM_ASSERT(index < size());
}

template<class T>
void insertInto(std::vector<std::unique_ptr<T>>& elements, std::vector<std::unique_ptr<T>> inserted,
                unsigned long index)
{
    ZEM_ASSERT(index <= elements.size());
    elements.insert(elements.begin() + static_cast<std::ptrdiff_t>(index), std::make_move_iterator(inserted.begin()),
                    std::make_move_iterator(inserted.end()));
}

template<class T>
std::vector<std::unique_ptr<T>> takeFrom(std::vector<std::unique_ptr<T>>& elements,
                                         const CollaborationUtils::IndexRange<unsigned long>& range)
{
    ZEM_ASSERT(range.getEnd() <= elements.size());
    const auto first = elements.begin() + static_cast<std::ptrdiff_t>(range.getBegin());
    const auto last = elements.begin() + static_cast<std::ptrdiff_t>(range.getEnd());
    std::vector<std::unique_ptr<T>> taken(std::make_move_iterator(first), std::make_move_iterator(last));
    elements.erase(first, last);
    return taken;
}

} // namespace Zem::DOMCollaboration::WrapperDetails
