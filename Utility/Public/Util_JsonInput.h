#pragma once

/// What the JSON input archive does otherwise than cereal's own, as `Util_Json.h` lists it. It is a part of that
/// header.

#include "Util_Export.h"

#include <cereal/archives/json.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/string.hpp>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>

namespace Zem
{

namespace JsonDetails
{

/// Keeps a loaded object under its id, in a form that remembers its class.
template<class T>
struct LoadedObject
{
    void operator()(const void*) const
    {
    }

    std::shared_ptr<T> _object;
};

[[noreturn]] ZEM_EXPORT void throwObjectOfAnotherClass(std::uint32_t id);

} // namespace JsonDetails

/// Remembers a loaded object for later pointers to the same id of the archive.
template<class T>
void registerLoadedObject(cereal::JSONInputArchive& archive, std::uint32_t id, std::shared_ptr<T> object)
{
    T* const address = object.get();
    archive.registerSharedPointer(id, std::shared_ptr<void>(address, JsonDetails::LoadedObject<T>{std::move(object)}));
}

/// The object that was registered under `id`; null for id 0.
/// Fails: `cereal::Exception` when there is none, or it is of another class.
template<class T>
std::shared_ptr<T> findLoadedObject(cereal::JSONInputArchive& archive, std::uint32_t id)
{
    const std::shared_ptr<void> registered = archive.getSharedPointer(id);
    if (!registered)
    {
        return nullptr;
    }
    const auto* loaded = std::get_deleter<JsonDetails::LoadedObject<T>>(registered);
    if (!loaded)
    {
        JsonDetails::throwObjectOfAnotherClass(id);
    }
    return loaded->_object;
}

} // namespace Zem

namespace cereal
{

/// Small integers. Fail: `RapidJSONException` on what is no integer, `Exception` on one that doesn't fit.
void load(JSONInputArchive& archive, char& number);
void load(JSONInputArchive& archive, signed char& number);
void load(JSONInputArchive& archive, unsigned char& number);
void load(JSONInputArchive& archive, short& number);
void load(JSONInputArchive& archive, unsigned short& number);

/// Numbers with a fraction. Fail: `RapidJSONException` on what is no number, `Exception` on one that isn't finite or
/// doesn't fit.
void load(JSONInputArchive& archive, float& number);
void load(JSONInputArchive& archive, double& number);

void load(JSONInputArchive& archive, std::string& text);

/// Shared pointers. Fails: `Exception` when the id was never seen, or belongs to an object of another class.
template<class T>
requires(!traits::has_load_and_construct<T, JSONInputArchive>::value) void load(
    JSONInputArchive& archive, memory_detail::PtrWrapper<std::shared_ptr<T>&>& wrapper)
{
    using Object = std::remove_const_t<T>;
    std::uint32_t id = 0;
    archive(make_nvp("id", id));
    if ((id & detail::msb_32bit) == 0)
    {
        wrapper.ptr = Zem::findLoadedObject<Object>(archive, id);
        return;
    }
    std::shared_ptr<Object> object(access::construct<Object>());
    archive(make_nvp("data", *object));
    Zem::registerLoadedObject(archive, id, object);
    wrapper.ptr = std::move(object);
}

} // namespace cereal
