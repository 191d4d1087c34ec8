#include "DOM_Json.h"
#include "DOM_Blocks.h"
#include "DOM_InterningArchive.h"
#include "DOM_PolymorphicJson.h"
#include "DOM_Runs.h"

#include <array>
#include <string>

namespace Zem::DOM::JsonDetails
{

void throwInvalidEnumerator(unsigned long number, unsigned long last)
{
    throw cereal::Exception("Invalid enumerator " + std::to_string(number) + ", the last one is " +
                            std::to_string(last));
}

const SharedObjectFactory* findStyleFactory(cereal::JSONInputArchive& archive)
{
    const auto* interning = dynamic_cast<const InterningInputArchive*>(&archive);
    return interning ? &interning->getFactory() : nullptr;
}

MetSharedPointers* findMetPointers(cereal::JSONOutputArchive& archive)
{
    auto* const interning = dynamic_cast<InterningOutputArchive*>(&archive);
    return interning ? &interning->getMetPointers() : nullptr;
}

namespace
{

std::span<const PolymorphicClass<Block>> getBlockClasses()
{
    static const std::array rows{
        makePolymorphicClass<Block, Paragraph>("Zem::DOM::Paragraph"),
        makePolymorphicClass<Block, Table>("Zem::DOM::Table"),
        makePolymorphicClass<Block, SectionTag>("Zem::DOM::SectionTag"),
        makePolymorphicClass<Block, Shape>("Zem::DOM::Shape"),
        makePolymorphicClass<Block, FieldBlock>("Zem::DOM::FieldBlock"),
    };
    return rows;
}

std::span<const PolymorphicClass<Run>> getRunClasses()
{
    static const std::array rows{
        makePolymorphicClass<Run, TextRun>("Zem::DOM::TextRun"),
        makePolymorphicClass<Run, TabRun>("Zem::DOM::TabRun"),
        makePolymorphicClass<Run, BreakRun>("Zem::DOM::BreakRun"),
        makePolymorphicClass<Run, DrawingRun>("Zem::DOM::DrawingRun"),
        makePolymorphicClass<Run, BookmarkRun>("Zem::DOM::BookmarkRun"),
        makePolymorphicClass<Run, FieldRun>("Zem::DOM::FieldRun"),
        makePolymorphicClass<Run, AnchorRun>("Zem::DOM::AnchorRun"),
    };
    return rows;
}

} // namespace

void savePointer(cereal::JSONOutputArchive& archive, const std::unique_ptr<Block>& block)
{
    savePolymorphic(archive, block, getBlockClasses());
}

void loadPointer(cereal::JSONInputArchive& archive, std::unique_ptr<Block>& block)
{
    loadPolymorphic(archive, block, getBlockClasses());
}

void savePointer(cereal::JSONOutputArchive& archive, const std::shared_ptr<const Block>& block)
{
    savePolymorphic(archive, block, getBlockClasses());
}

void loadPointer(cereal::JSONInputArchive& archive, std::shared_ptr<const Block>& block)
{
    loadPolymorphic(archive, block, getBlockClasses());
}

void savePointer(cereal::JSONOutputArchive& archive, const std::unique_ptr<Run>& run)
{
    savePolymorphic(archive, run, getRunClasses());
}

void loadPointer(cereal::JSONInputArchive& archive, std::unique_ptr<Run>& run)
{
    loadPolymorphic(archive, run, getRunClasses());
}

void savePointer(cereal::JSONOutputArchive& archive, const std::shared_ptr<const Run>& run)
{
    savePolymorphic(archive, run, getRunClasses());
}

void loadPointer(cereal::JSONInputArchive& archive, std::shared_ptr<const Run>& run)
{
    loadPolymorphic(archive, run, getRunClasses());
}

} // namespace Zem::DOM::JsonDetails
