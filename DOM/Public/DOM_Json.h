#pragma once

/// The JSON forms that the model adds to those of `Util_Json.h`: enumerations, shared styles, bundles of properties,
/// blocks and runs. Only .cpp files include this header, and they do so wherever an archive meets one of these.

#include "DOM_Block.h"
#include "DOM_Run.h"
#include "DOM_SharedObjectFactory.h"
#include "DOM_SharedPointers.h"
#include "DOM_SharedStyle.h"

#include "Util_Export.h"
#include "Util_Json.h"

#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>

namespace Zem::DOM
{

/// An enumeration whose numbers go from 0 to that of `getLastEnumerator`, without gaps.
template<class T>
concept BoundedEnum = std::is_enum_v<T> && std::is_unsigned_v<std::underlying_type_t<T>> && requires
{
    {
        getLastEnumerator(T{})
        } -> std::same_as<T>;
};

namespace JsonDetails
{

[[noreturn]] ZEM_EXPORT void throwInvalidEnumerator(unsigned long number, unsigned long last);

/// The factory that the archive interns its styles with; null for an archive that makes them afresh.
ZEM_EXPORT const SharedObjectFactory* findStyleFactory(cereal::JSONInputArchive& archive);

/// The shared pointers that the archive has met; null for an archive that writes all of them as they are. One that
/// keeps them writes equal things alike.
ZEM_EXPORT MetSharedPointers* findMetPointers(cereal::JSONOutputArchive& archive);

/// The pointer that the archive writes in place of `pointer`. It is the pointer itself in an archive that writes them
/// as they are, and otherwise the first one of equal content, which is null if null means the same.
template<SharedPointer Pointer>
const Pointer& findWrittenPointer(cereal::JSONOutputArchive& archive, const Pointer& pointer)
{
    MetSharedPointers* const metPointers = findMetPointers(archive);
    return metPointers ? metPointers->findFirst(pointer) : pointer;
}

/// How a style stands in an archive.
template<class Style>
struct StyleOutput
{
    template<class Archive>
    void save(Archive& archive) const
    {
        archive(cereal::make_nvp("_style", *_style));
    }

    const Style* _style;
};

template<class Style>
struct StyleInput
{
    template<class Archive>
    void load(Archive& archive)
    {
        archive(cereal::make_nvp("_style", _style));
    }

    Style _style;
};

template<class Style>
SharedStyleConstIPtr<Style> makeSharedStyle(cereal::JSONInputArchive& archive, Style style)
{
    const SharedObjectFactory* const factory = findStyleFactory(archive);
    return factory ? factory->create(std::move(style))
                   : SharedStyleConstIPtr<Style>(new SharedStyle<Style>(std::move(style)));
}

/// The work of the functions of namespace cereal below, under names that a shared library exports.
ZEM_EXPORT void savePointer(cereal::JSONOutputArchive& archive, const std::unique_ptr<Block>& block);
ZEM_EXPORT void loadPointer(cereal::JSONInputArchive& archive, std::unique_ptr<Block>& block);
ZEM_EXPORT void savePointer(cereal::JSONOutputArchive& archive, const std::shared_ptr<const Block>& block);
ZEM_EXPORT void loadPointer(cereal::JSONInputArchive& archive, std::shared_ptr<const Block>& block);
ZEM_EXPORT void savePointer(cereal::JSONOutputArchive& archive, const std::unique_ptr<Run>& run);
ZEM_EXPORT void loadPointer(cereal::JSONInputArchive& archive, std::unique_ptr<Run>& run);
ZEM_EXPORT void savePointer(cereal::JSONOutputArchive& archive, const std::shared_ptr<const Run>& run);
ZEM_EXPORT void loadPointer(cereal::JSONInputArchive& archive, std::shared_ptr<const Run>& run);

} // namespace JsonDetails

} // namespace Zem::DOM

namespace cereal
{

/// Fails: `Exception`, quoting the number, when it is no enumerator.
template<Zem::DOM::BoundedEnum T>
void load_minimal(const JSONInputArchive&, T& enumerator, const std::underlying_type_t<T>& number)
{
    constexpr auto last = static_cast<std::underlying_type_t<T>>(getLastEnumerator(T{}));
    if (number > last)
    {
        Zem::DOM::JsonDetails::throwInvalidEnumerator(number, last);
    }
    enumerator = static_cast<T>(number);
}

/// Writes a style's content once for an archive, and its number from then on.
template<class Style>
void save(JSONOutputArchive& archive, const boost::intrusive_ptr<const Zem::DOM::SharedStyle<Style>>& sharedStyle)
{
    const auto& written = Zem::DOM::JsonDetails::findWrittenPointer(archive, sharedStyle);
    const std::shared_ptr<const void> keptAlive(written.get(), [written](const void*) {});
    const std::uint32_t id = archive.registerSharedPointer(keptAlive);
    archive(make_nvp("id", id));
    if ((id & detail::msb_32bit) != 0)
    {
        using Output = Zem::DOM::JsonDetails::StyleOutput<Style>;
        archive(std::make_unique<Output>(Output{&written->get()}));
    }
}

/// Writes a bundle of properties in cereal's form of shared pointers.
template<class Bundle>
requires Zem::DOM::SharedPointer<std::shared_ptr<const Bundle>>
void save(JSONOutputArchive& archive, const std::shared_ptr<const Bundle>& bundle)
{
    const auto& written = Zem::DOM::JsonDetails::findWrittenPointer(archive, bundle);
    archive(make_nvp("ptr_wrapper", memory_detail::make_ptr_wrapper(written)));
}

/// One object for each number. Fails: `Exception` when the number was never seen, or belongs to something else.
template<class Style>
void load(JSONInputArchive& archive, boost::intrusive_ptr<const Zem::DOM::SharedStyle<Style>>& sharedStyle)
{
    using SharedStyleConstIPtr = boost::intrusive_ptr<const Zem::DOM::SharedStyle<Style>>;
    std::uint32_t id = 0;
    archive(make_nvp("id", id));
    if ((id & detail::msb_32bit) == 0)
    {
        const auto loaded = Zem::findLoadedObject<SharedStyleConstIPtr>(archive, id);
        sharedStyle = loaded ? *loaded : nullptr;
        return;
    }
    std::unique_ptr<Zem::DOM::JsonDetails::StyleInput<Style>> input;
    archive(input);
    sharedStyle =
        input ? Zem::DOM::JsonDetails::makeSharedStyle(archive, std::move(input->_style)) : SharedStyleConstIPtr();
    Zem::registerLoadedObject(archive, id, std::make_shared<SharedStyleConstIPtr>(sharedStyle));
}

/// Blocks and runs, under the names of their classes.
/// Fail: `Exception` on a class that isn't in the closed list of blocks or of runs.
inline void save(JSONOutputArchive& archive, const std::unique_ptr<Zem::DOM::Block>& block)
{
    Zem::DOM::JsonDetails::savePointer(archive, block);
}

inline void load(JSONInputArchive& archive, std::unique_ptr<Zem::DOM::Block>& block)
{
    Zem::DOM::JsonDetails::loadPointer(archive, block);
}

inline void save(JSONOutputArchive& archive, const std::shared_ptr<const Zem::DOM::Block>& block)
{
    Zem::DOM::JsonDetails::savePointer(archive, block);
}

inline void load(JSONInputArchive& archive, std::shared_ptr<const Zem::DOM::Block>& block)
{
    Zem::DOM::JsonDetails::loadPointer(archive, block);
}

inline void save(JSONOutputArchive& archive, const std::unique_ptr<Zem::DOM::Run>& run)
{
    Zem::DOM::JsonDetails::savePointer(archive, run);
}

inline void load(JSONInputArchive& archive, std::unique_ptr<Zem::DOM::Run>& run)
{
    Zem::DOM::JsonDetails::loadPointer(archive, run);
}

inline void save(JSONOutputArchive& archive, const std::shared_ptr<const Zem::DOM::Run>& run)
{
    Zem::DOM::JsonDetails::savePointer(archive, run);
}

inline void load(JSONInputArchive& archive, std::shared_ptr<const Zem::DOM::Run>& run)
{
    Zem::DOM::JsonDetails::loadPointer(archive, run);
}

} // namespace cereal
