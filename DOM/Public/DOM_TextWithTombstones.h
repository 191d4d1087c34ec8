#pragma once

#include "DOM_Block.h"

#include "CU_TombstonesStorage.h"

namespace Zem::DOM
{

/// A rich text: its live blocks in order, and the record of the dead slots among the live ones. A slot is one element
/// of the flat form of the text: a paragraph's tag or mark, a run's tag, a byte, or one whole atomic run or block.
class ZEM_EXPORT TextWithTombstones
{
public:
    TextWithTombstones();
    TextWithTombstones(const TextWithTombstones& other);
    TextWithTombstones(TextWithTombstones&&) noexcept;
    TextWithTombstones& operator=(const TextWithTombstones& other);
    TextWithTombstones& operator=(TextWithTombstones&&) noexcept;
    ~TextWithTombstones();

    const Blocks& getBlocks() const
    {
        return _blocks;
    }

    Blocks& getBlocks()
    {
        return _blocks;
    }

    const CollaborationUtils::TombstonesStorage& getTombstones() const
    {
        return _tombstones;
    }

    CollaborationUtils::TombstonesStorage& getTombstones()
    {
        return _tombstones;
    }

    friend ZEM_EXPORT bool operator==(const TextWithTombstones& left, const TextWithTombstones& right);

    template<class Archive>
    void serialize(Archive& archive);

private:
    Blocks _blocks;
    CollaborationUtils::TombstonesStorage _tombstones;
};

} // namespace Zem::DOM
