#pragma once

/// The JSON form of classes with an identity: the base first, without a name, then the class's own fields.

#include "DOM_Json.h"

#include "Util_UUIDable.h"

#include <tuple>

namespace Zem::DOM::JsonDetails
{

template<class Archive, class T>
void serializeIdentified(Archive& archive, T& object)
{
    archive(cereal::base_class<UUIDable>(&object));
    std::apply([&](const auto&... rows) { (archive(cereal::make_nvp(rows._name, object.*(rows._member))), ...); },
               T::ownFields());
}

} // namespace Zem::DOM::JsonDetails
