#pragma once

#include "DOM_Block.h"
#include "DOM_Run.h"
#include "DOM_SharedStyle.h"

namespace Zem::DOM
{

struct NumberingRef;
class ParagraphStyle;

/// A paragraph: its runs in order, its own style, the style of its mark, and its place in a numbering, if it has one.
class ZEM_EXPORT Paragraph final : public BlockImpl<Paragraph, BlockKind::Paragraph>
{
public:
    Paragraph();
    Paragraph(const Paragraph& other);
    Paragraph(Paragraph&&) noexcept;
    Paragraph& operator=(const Paragraph& other);
    Paragraph& operator=(Paragraph&&) noexcept;
    ~Paragraph() override;

    const Runs& getRuns() const
    {
        return _runs;
    }

    Runs& getRuns()
    {
        return _runs;
    }

    const SharedStyleConstIPtr<ParagraphStyle>& getSharedStyle() const
    {
        return _sharedStyle;
    }

    SharedStyleConstIPtr<ParagraphStyle>& getSharedStyle()
    {
        return _sharedStyle;
    }

    const SharedStyleConstIPtr<RunStyle>& getSharedParaMarkStyle() const
    {
        return _sharedParaMarkStyle;
    }

    SharedStyleConstIPtr<RunStyle>& getSharedParaMarkStyle()
    {
        return _sharedParaMarkStyle;
    }

    /// Null if the paragraph isn't numbered.
    const std::unique_ptr<NumberingRef>& getNumRef() const
    {
        return _numRef;
    }

    std::unique_ptr<NumberingRef>& getNumRef()
    {
        return _numRef;
    }

    friend ZEM_EXPORT bool operator==(const Paragraph& left, const Paragraph& right);

    template<class Archive>
    void serialize(Archive& archive);

private:
    Runs _runs;
    SharedStyleConstIPtr<ParagraphStyle> _sharedStyle;
    SharedStyleConstIPtr<RunStyle> _sharedParaMarkStyle;
    std::unique_ptr<NumberingRef> _numRef;
};

} // namespace Zem::DOM
