#pragma once

/// Polymorphic pointers to the classes of a closed list, in cereal's form. A table of the classes takes the place of
/// cereal's registration, which is filled at start-up, may be dropped by the linker, and leaks an object that is read
/// under the name of a class of another list.

#include "Util_Json.h"

#include <cereal/details/util.hpp>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>

namespace Zem::DOM::JsonDetails
{

/// One class of the list. The name is wire text: it never changes and is never given to another class.
template<class Base>
struct PolymorphicClass
{
    const char* _name;
    const std::type_info* _type;
    void (*_saveUnique)(cereal::JSONOutputArchive&, const Base&);
    void (*_saveShared)(cereal::JSONOutputArchive&, const std::shared_ptr<const Base>&);
    std::unique_ptr<Base> (*_loadUnique)(cereal::JSONInputArchive&);
    std::shared_ptr<const Base> (*_loadShared)(cereal::JSONInputArchive&);
};

template<class Pointer>
void serializePointer(auto& archive, Pointer& pointer)
{
    archive(cereal::make_nvp("ptr_wrapper", cereal::memory_detail::make_ptr_wrapper(pointer)));
}

template<class Base, class Derived>
PolymorphicClass<Base> makePolymorphicClass(const char* name)
{
    PolymorphicClass<Base> row;
    row._name = name;
    row._type = &typeid(Derived);
    row._saveUnique = [](cereal::JSONOutputArchive& archive, const Base& object)
    {
        using EmptyDeleter = cereal::detail::EmptyDeleter<const Derived>;
        const std::unique_ptr<const Derived, EmptyDeleter> pointer(&static_cast<const Derived&>(object));
        serializePointer(archive, pointer);
    };
    row._saveShared = [](cereal::JSONOutputArchive& archive, const std::shared_ptr<const Base>& object)
    {
        const auto pointer = std::static_pointer_cast<const Derived>(object);
        serializePointer(archive, pointer);
    };
    row._loadUnique = [](cereal::JSONInputArchive& archive) -> std::unique_ptr<Base>
    {
        std::unique_ptr<Derived> pointer;
        serializePointer(archive, pointer);
        return pointer;
    };
    row._loadShared = [](cereal::JSONInputArchive& archive) -> std::shared_ptr<const Base>
    {
        std::shared_ptr<const Derived> pointer;
        serializePointer(archive, pointer);
        return pointer;
    };
    return row;
}

[[noreturn]] inline void throwUnregistered(std::string_view verb, const std::string& type)
{
    throw cereal::Exception("Trying to " + std::string(verb) + " an unregistered polymorphic type (" + type +
                            ").\nMake sure your type is registered with CEREAL_REGISTER_TYPE and that the archive you "
                            "are using was included (and registered with CEREAL_REGISTER_ARCHIVE) prior to calling "
                            "CEREAL_REGISTER_TYPE.\nIf your type is already registered and you still see this error, "
                            "you may need to use CEREAL_REGISTER_DYNAMIC_INIT.");
}

/// Writes the name of the object's class, or its number once the archive has it, and returns the class.
template<class Base>
const PolymorphicClass<Base>& saveClass(cereal::JSONOutputArchive& archive, const Base& object,
                                        std::span<const PolymorphicClass<Base>> classes)
{
    const std::type_info& type = typeid(object);
    const auto row = std::find_if(classes.begin(), classes.end(),
                                  [&](const PolymorphicClass<Base>& candidate) { return *candidate._type == type; });
    if (row == classes.end())
    {
        throwUnregistered("save", cereal::util::demangle(type.name()));
    }
    const std::uint32_t id = archive.registerPolymorphicType(row->_name);
    archive(cereal::make_nvp("polymorphic_id", id));
    if ((id & cereal::detail::msb_32bit) != 0)
    {
        archive(cereal::make_nvp("polymorphic_name", std::string(row->_name)));
    }
    return *row;
}

/// Reads what `saveClass` writes; null for a null pointer.
template<class Base>
const PolymorphicClass<Base>* loadClass(cereal::JSONInputArchive& archive,
                                        std::span<const PolymorphicClass<Base>> classes)
{
    std::uint32_t id = 0;
    archive(cereal::make_nvp("polymorphic_id", id));
    if (id == 0)
    {
        return nullptr;
    }
    if ((id & cereal::detail::msb2_32bit) != 0)
    {
        throw cereal::Exception("Cannot load a polymorphic type that is not default constructable and does not have a "
                                "load_and_construct function");
    }
    std::string name;
    if ((id & cereal::detail::msb_32bit) != 0)
    {
        archive(cereal::make_nvp("polymorphic_name", name));
        archive.registerPolymorphicName(id, name);
    }
    else
    {
        name = archive.getPolymorphicName(id);
    }
    const auto row = std::find_if(classes.begin(), classes.end(),
                                  [&](const PolymorphicClass<Base>& candidate) { return candidate._name == name; });
    if (row == classes.end())
    {
        throwUnregistered("load", name);
    }
    return &*row;
}

inline void saveNull(cereal::JSONOutputArchive& archive)
{
    archive(cereal::make_nvp("polymorphic_id", std::uint32_t(0)));
}

template<class Base>
void savePolymorphic(cereal::JSONOutputArchive& archive, const std::unique_ptr<Base>& object,
                     std::span<const PolymorphicClass<Base>> classes)
{
    if (!object)
    {
        return saveNull(archive);
    }
    saveClass(archive, *object, classes)._saveUnique(archive, *object);
}

template<class Base>
void savePolymorphic(cereal::JSONOutputArchive& archive, const std::shared_ptr<const Base>& object,
                     std::span<const PolymorphicClass<Base>> classes)
{
    if (!object)
    {
        return saveNull(archive);
    }
    saveClass(archive, *object, classes)._saveShared(archive, object);
}

template<class Base>
void loadPolymorphic(cereal::JSONInputArchive& archive, std::unique_ptr<Base>& object,
                     std::span<const PolymorphicClass<Base>> classes)
{
    const PolymorphicClass<Base>* const row = loadClass(archive, classes);
    object = row ? row->_loadUnique(archive) : nullptr;
}

template<class Base>
void loadPolymorphic(cereal::JSONInputArchive& archive, std::shared_ptr<const Base>& object,
                     std::span<const PolymorphicClass<Base>> classes)
{
    const PolymorphicClass<Base>* const row = loadClass(archive, classes);
    object = row ? row->_loadShared(archive) : nullptr;
}

} // namespace Zem::DOM::JsonDetails
