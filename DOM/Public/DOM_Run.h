#pragma once

#include "DOM_SharedStyle.h"

#include "Util_Clonable.h"
#include "Util_Export.h"

#include <memory>
#include <vector>

namespace Zem::DOM
{

class RunStyle;

/// The closed list of what can stand in a paragraph.
enum class RunKind : unsigned char
{
    TextRun,
    TabRun,
    BreakRun,
    DrawingRun,
    BookmarkRun,
    FieldRun,
    AnchorRun
};

/// The polymorphic base of what a paragraph holds. As with blocks, the kind is kept beside the dynamic type.
class ZEM_EXPORT Run : public Clonable<Run>
{
public:
    ~Run() override;

    RunKind getKind() const
    {
        return _kind;
    }

    const SharedStyleConstIPtr<RunStyle>& getSharedStyle() const
    {
        return _sharedStyle;
    }

    SharedStyleConstIPtr<RunStyle>& getSharedStyle()
    {
        return _sharedStyle;
    }

    friend bool operator==(const Run& left, const Run& right)
    {
        return left._kind == right._kind && left.isEqualToSameKind(right);
    }

protected:
    explicit Run(RunKind kind);
    Run(const Run&);
    Run(Run&&) noexcept;
    Run& operator=(const Run&);
    Run& operator=(Run&&) noexcept;

private:
    /// Requires: `other` is of the dynamic type of this run.
    virtual bool isEqualToSameKind(const Run& other) const = 0;

    RunKind _kind;
    SharedStyleConstIPtr<RunStyle> _sharedStyle;
};

using Runs = std::vector<std::unique_ptr<Run>>;

/// Whether two runs have equal styles, by content.
ZEM_EXPORT bool areStylesEqual(const Run& left, const Run& right);

/// Implements what every kind of run does alike. `Derived` has `hasEqualContent(const Derived&) const`, which compares
/// all but the style.
template<class Derived, RunKind kind>
class RunImpl : public Run
{
public:
    static constexpr RunKind Kind = kind;

    void cloneTo(std::shared_ptr<Run>& target) const override
    {
        target = std::make_shared<Derived>(static_cast<const Derived&>(*this));
    }

    void cloneTo(std::unique_ptr<Run>& target) const override
    {
        target = std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }

protected:
    RunImpl()
        : Run(kind)
    {
    }

private:
    bool isEqualToSameKind(const Run& other) const override
    {
        return areStylesEqual(*this, other) &&
               static_cast<const Derived&>(*this).hasEqualContent(static_cast<const Derived&>(other));
    }
};

} // namespace Zem::DOM
