#pragma once

#include "TreeModel.h"

#include <random>

namespace Zem::CollaborationEngine::Testing
{

/// Makes operations of every kind that are legal in a document, on nodes at every depth, but for restorings: only who
/// knows the history can make these. Names that it gives are unique.
class RandomTreeOperations
{
public:
    explicit RandomTreeOperations(unsigned long seed)
        : _random(seed)
    {
    }

    OperationUPtr make(const TreeDocument& document);

    unsigned long below(unsigned long end)
    {
        return std::uniform_int_distribution<unsigned long>(0, end - 1)(_random);
    }

private:
    struct Place
    {
        OperationNodeAddress _address;
        const TreeElement* _element;
    };

    void collectPlaces(std::vector<Place>& places, const OperationNodeAddress& address,
                       const TreeElement& element) const;
    std::vector<Place> collectPlaces(const TreeDocument& document) const;
    std::vector<TreeElement> makeElements(unsigned long count);
    template<class Single>
    OperationUPtr makeSlotsOperation(const TreeText& text, const Single& single);
    OperationUPtr makeListOperation(const TreeDocument& document);
    OperationUPtr makeTextOperation(const Place& place);
    OperationUPtr makePropertyOperation(const Place& place);
    OperationUPtr makeMapOperation(const TreeDocument& document);
    template<class Tag>
    OperationUPtr makeLineOperation(const std::vector<TreeLine>& lines, const std::vector<TreeLine>& crossing);

    std::mt19937_64 _random;
    int _nextName = 1000;
};

} // namespace Zem::CollaborationEngine::Testing
