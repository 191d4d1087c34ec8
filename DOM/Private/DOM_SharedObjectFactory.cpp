#include "DOM_SharedObjectFactory.h"
#include "DOM_StylePool.h"

#include <tuple>
#include <utility>

namespace Zem::DOM
{

class SharedObjectFactory::Pools
{
public:
    template<class Style>
    SharedStyleConstIPtr<Style> create(Style style)
    {
        return std::get<StylePool<Style>>(_pools).create(std::move(style));
    }

    unsigned long getCount() const
    {
        return std::apply([](const auto&... pools) { return (pools.getCount() + ...); }, _pools);
    }

private:
    std::tuple<StylePool<CellStyle>, StylePool<ParagraphStyle>, StylePool<RunStyle>, StylePool<TableStyle>,
               StylePool<RowStyle>, StylePool<ColumnStyle>>
        _pools;
};

SharedObjectFactory::SharedObjectFactory() = default;

SharedObjectFactory::SharedObjectFactory(const SharedObjectFactory& other)
    : _pools(other._pools ? std::make_unique<Pools>(*other._pools) : nullptr)
{
}

SharedObjectFactory::SharedObjectFactory(SharedObjectFactory&&) noexcept = default;

SharedObjectFactory& SharedObjectFactory::operator=(const SharedObjectFactory& other)
{
    return *this = SharedObjectFactory(other);
}

SharedObjectFactory& SharedObjectFactory::operator=(SharedObjectFactory&&) noexcept = default;
SharedObjectFactory::~SharedObjectFactory() = default;

template<class Style>
SharedStyleConstIPtr<Style> SharedObjectFactory::createInPool(Style style) const
{
    if (!_pools)
    {
        _pools = std::make_unique<Pools>();
    }
    return _pools->create(std::move(style));
}

SharedStyleConstIPtr<CellStyle> SharedObjectFactory::create(CellStyle style) const
{
    return createInPool(std::move(style));
}

SharedStyleConstIPtr<ParagraphStyle> SharedObjectFactory::create(ParagraphStyle style) const
{
    return createInPool(std::move(style));
}

SharedStyleConstIPtr<RunStyle> SharedObjectFactory::create(RunStyle style) const
{
    return createInPool(std::move(style));
}

SharedStyleConstIPtr<TableStyle> SharedObjectFactory::create(TableStyle style) const
{
    return createInPool(std::move(style));
}

SharedStyleConstIPtr<RowStyle> SharedObjectFactory::create(RowStyle style) const
{
    return createInPool(std::move(style));
}

SharedStyleConstIPtr<ColumnStyle> SharedObjectFactory::create(ColumnStyle style) const
{
    return createInPool(std::move(style));
}

unsigned long SharedObjectFactory::getStylesCount() const
{
    return _pools ? _pools->getCount() : 0;
}

} // namespace Zem::DOM
