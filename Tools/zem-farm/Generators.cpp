#include "Generators.h"

#include <stdexcept>

namespace ZemFarm
{

namespace
{

/// One row for each family.
constexpr Generators (*families[])() = {makeTextEdits,        makeStyleChanges,   makeRangeOperations,
                                        makeObjectInsertions, makeNodeProperties, makeDocumentChanges,
                                        makeUndoings};

Generators collectGenerators()
{
    Generators generators;
    for (const auto makeFamily : families)
    {
        const Generators family = makeFamily();
        generators.insert(generators.end(), family.begin(), family.end());
    }
    return generators;
}

Generators& getMutableGenerators()
{
    static Generators generators = collectGenerators();
    return generators;
}

} // namespace

const Generators& getGenerators()
{
    return getMutableGenerators();
}

void addGenerator(const Generator& generator)
{
    getMutableGenerators().push_back(generator);
}

const Generator* findGenerator(std::string_view name)
{
    for (const Generator& generator : getGenerators())
    {
        if (name == generator._name)
        {
            return &generator;
        }
    }
    return nullptr;
}

const Generator& pickGenerator(DocumentKind kind, Random& random)
{
    unsigned long weights = 0;
    for (const Generator& generator : getGenerators())
    {
        weights += generator._isFor(kind) ? generator._weight : 0;
    }
    unsigned long rest = random.pick(weights);
    for (const Generator& generator : getGenerators())
    {
        const unsigned long weight = generator._isFor(kind) ? generator._weight : 0;
        if (rest < weight)
        {
            return generator;
        }
        rest -= weight;
    }
    throw std::logic_error("no generator for a kind of document");
}

} // namespace ZemFarm
