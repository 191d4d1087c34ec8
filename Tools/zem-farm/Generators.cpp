#include "Generators.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace ZemFarm
{

namespace
{

/// One row for each family.
constexpr Generators (*families[])() = {makeTextEdits,        makeStyleChanges,   makeRangeOperations,
                                        makeObjectInsertions, makeNodeProperties, makeDocumentChanges,
                                        makeUndoings};

/// What is done by the commands of an editor, and its undo: the judge knows what they mean.
constexpr std::array<std::string_view, 14> judged = {
    "type",         "break-line",         "paste", "erase",   "replace",   "format-runs", "format-paragraphs",
    "look-of-runs", "look-of-paragraphs", "link",  "comment", "undo-last", "undo-any",    "redo"};

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

bool isJudged(const Generator& generator)
{
    return std::find(judged.begin(), judged.end(), std::string_view(generator._name)) != judged.end();
}

const Generator& pickGenerator(const GeneratorChoice& choice, Random& random)
{
    const auto getWeight = [&](const Generator& generator)
    {
        const bool isLeftOut =
            std::find(choice._without.begin(), choice._without.end(), generator._name) != choice._without.end();
        const bool isPicked = generator._isFor(choice._kind) && (!choice._isJudged || isJudged(generator));
        return isPicked && !isLeftOut ? generator._weight : 0;
    };
    unsigned long weights = 0;
    for (const Generator& generator : getGenerators())
    {
        weights += getWeight(generator);
    }
    unsigned long rest = random.pick(weights);
    for (const Generator& generator : getGenerators())
    {
        const unsigned long weight = getWeight(generator);
        if (rest < weight)
        {
            return generator;
        }
        rest -= weight;
    }
    throw std::logic_error("no generator for a kind of document");
}

} // namespace ZemFarm
