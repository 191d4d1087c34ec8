#include "CE_BaseClientEditingStateTransformer.h"

#include "OperationNotation.h"
#include "SlotModel.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

/// A state that is the list of what it was brought past.
class LogState final : public ClientEditingState
{
public:
    bool operator==(const ClientEditingState& other) const override
    {
        const auto* log = cast<LogState>(&other);
        return log && log->_text == _text;
    }

    void clearCache() override
    {
        _text.clear();
    }

    void cloneTo(std::shared_ptr<ClientEditingState>& target) const override
    {
        target = std::make_shared<LogState>(*this);
    }

    void cloneTo(std::unique_ptr<ClientEditingState>& target) const override
    {
        target = std::make_unique<LogState>(*this);
    }

    std::string _text;
};

class LogTransformer final : public BaseClientEditingStateTransformer
{
public:
    void includeImpl(const AtomicOperation& operation, ClientEditingState& state) override
    {
        cast<LogState>(state)._text += "+" + describe(operation);
    }

    void excludeImpl(const AtomicOperation& operation, ClientEditingState& state) override
    {
        cast<LogState>(state)._text += "-" + describe(operation);
    }
};

} // namespace

TEST(BaseClientEditingStateTransformer, UnpacksForwardAndBack)
{
    std::vector<OperationUPtr> parts;
    parts.push_back(makeMove(0, 1));
    parts.push_back(std::make_unique<EmptyOperation>());
    parts.push_back(std::make_unique<ShadowedOperation>(dynamicUPtrCheckedCast<AtomicOperation>(makeMove(4, 5))));
    parts.push_back(makeMove(2, 3));
    const CompositeOperation composite(std::move(parts));
    LogTransformer transformer;
    LogState state;
    transformer.include(composite, state);
    EXPECT_EQ(state._text, "+/1 move(0, by 1)+/1 move(2, by 1)");
    state.clearCache();
    transformer.exclude(composite, state);
    EXPECT_EQ(state._text, "-/1 move(2, by 1)-/1 move(0, by 1)");
}

} // namespace Zem::CollaborationEngine::Testing
