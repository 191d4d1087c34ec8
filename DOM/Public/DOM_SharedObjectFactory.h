#pragma once

#include "DOM_CellStyle.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RowColumnStyle.h"
#include "DOM_RunStyle.h"
#include "DOM_SharedStyle.h"
#include "DOM_TableStyle.h"

#include "Util_Export.h"

#include <memory>

namespace Zem::DOM
{

/// Makes the shared styles of one document, such that equal styles are one object.
///
/// The factory holds the styles that it made. It drops those that nobody else holds whenever their number has doubled
/// since it last did so, so that it never holds more than twice as many as are in use, plus a few dozen.
///
/// Cost: `create` hashes and compares one style, which is linear in the style's size and constant in the number of
/// styles, amortised over the drops.
///
/// Threads: none of the functions may run beside another one of the same factory. The styles that they answer with may
/// go anywhere.
class ZEM_EXPORT SharedObjectFactory
{
public:
    SharedObjectFactory();

    /// The copy knows the styles in use of `other`, so that elements copied with it are interned in both.
    SharedObjectFactory(const SharedObjectFactory& other);

    /// `other` is left without styles, and can go on making some.
    SharedObjectFactory(SharedObjectFactory&& other) noexcept;

    SharedObjectFactory& operator=(const SharedObjectFactory& other);
    SharedObjectFactory& operator=(SharedObjectFactory&& other) noexcept;
    ~SharedObjectFactory();

    /// The one object for a style that is equal to `style`.
    SharedStyleConstIPtr<CellStyle> create(CellStyle style) const;
    SharedStyleConstIPtr<ParagraphStyle> create(ParagraphStyle style) const;
    SharedStyleConstIPtr<RunStyle> create(RunStyle style) const;
    SharedStyleConstIPtr<TableStyle> create(TableStyle style) const;
    SharedStyleConstIPtr<RowStyle> create(RowStyle style) const;
    SharedStyleConstIPtr<ColumnStyle> create(ColumnStyle style) const;

    /// How many styles of all kinds the factory holds.
    unsigned long getStylesCount() const;

private:
    class Pools;

    template<class Style>
    SharedStyleConstIPtr<Style> createInPool(Style style) const;

    /// Null until the first style is made.
    mutable std::unique_ptr<Pools> _pools;
};

} // namespace Zem::DOM
