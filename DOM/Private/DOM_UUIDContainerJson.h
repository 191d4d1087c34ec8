#pragma once

/// Defines the JSON form of `UUIDContainer`; the sources with the forms of its elements instantiate it.

#include "DOM_Json.h"
#include "DOM_UUIDContainer.h"

#include <cstddef>
#include <utility>

namespace Zem::DOM
{

template<class T>
template<class Archive>
void UUIDContainer<T>::save(Archive& archive) const
{
    archive(cereal::make_size_tag(static_cast<cereal::size_type>(_collection.size())));
    for (const T& element : *this)
    {
        archive(element);
    }
}

template<class T>
template<class Archive>
void UUIDContainer<T>::load(Archive& archive)
{
    cereal::size_type count = 0;
    archive(cereal::make_size_tag(count));
    _collection.clear();
    for (cereal::size_type index = 0; index < count; ++index)
    {
        T element;
        archive(element);
        const UUID uuid = element.getUUID();
        if (!_collection.emplace(uuid, std::move(element)).second)
        {
            throw cereal::Exception("Two elements of one container have the UUID " + uuid.toString());
        }
    }
}

} // namespace Zem::DOM
