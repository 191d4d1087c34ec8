#pragma once

/// Stories of people who edit one text at the same moment, each told in every order of arrival at the server.

#include "Sharing/CS_SessionCase.h"

#include "DOM_Hyperlink.h"
#include "DOM_ParaProps.h"
#include "DOM_Paragraph.h"
#include "DOM_RunProps.h"
#include "DOM_Runs.h"
#include "DOM_SetToSharedStyle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace Zem::CollaborationSession
{

/// A text as people see it: `*bold*`, `_italic_`, `[linked]`, `(commented)`, `/` for a paragraph's end, `^` in front of
/// a centred paragraph.
inline std::string showLooks(const DOM::TextWithTombstones& text)
{
    std::string shown;
    for (const auto& block : text.getBlocks())
    {
        shown += shown.empty() && &block == &text.getBlocks().front() ? "" : "/";
        const auto* paragraph = dynamic_cast<const DOM::Paragraph*>(block.get());
        if (!paragraph)
        {
            shown += "#";
            continue;
        }
        const auto& paraProps = DOM::derefSharedStyle(paragraph->getSharedStyle()).getParaProps();
        shown += paraProps && paraProps->_alignment == DOM::ParagraphAlignment::Center ? "^" : "";
        std::string open;
        for (const auto& run : paragraph->getRuns())
        {
            const DOM::RunStyle& style = DOM::derefSharedStyle(run->getSharedStyle());
            const auto& props = style.getRunProps();
            std::string marks;
            marks += props && props->_weight == DOM::FontWeight::Bold ? "*" : "";
            marks += props && props->_slant == DOM::FontSlant::Italic ? "_" : "";
            marks += style.getHyperlink() ? "[" : "";
            marks += std::string(style.getCommentUUIDs().size(), '(');
            const auto* textRun = dynamic_cast<const DOM::TextRun*>(run.get());
            const std::string characters = textRun ? textRun->getText() : "~";
            if (characters.empty())
            {
                continue;
            }
            if (marks != open)
            {
                std::string closed(open.rbegin(), open.rend());
                std::replace(closed.begin(), closed.end(), '[', ']');
                std::replace(closed.begin(), closed.end(), '(', ')');
                shown += closed + marks;
                open = marks;
            }
            shown += characters;
        }
        std::string closed(open.rbegin(), open.rend());
        std::replace(closed.begin(), closed.end(), '[', ']');
        std::replace(closed.begin(), closed.end(), '(', ')');
        shown += closed;
    }
    return shown;
}

inline LookChange bold()
{
    return LookChange::setField(&DOM::RunProps::_weight, DOM::FontWeight::Bold);
}

inline LookChange italic()
{
    return LookChange::setField(&DOM::RunProps::_slant, DOM::FontSlant::Italic);
}

inline LookChange centred()
{
    return LookChange::setField(&DOM::ParaProps::_alignment, DOM::ParagraphAlignment::Center);
}

/// What one person does.
using Deed = std::function<void(Participant&)>;

class Story
{
public:
    explicit Story(std::string notation)
        : _notation(std::move(notation))
    {
    }

    /// What was done, and is known to all, before the story begins.
    Story& prepare(Deed deed)
    {
        _preparations.push_back(std::move(deed));
        return *this;
    }

    /// What people do at the same moment.
    Story& meanwhile(std::vector<Deed> deeds)
    {
        _deeds = std::move(deeds);
        return *this;
    }

    /// What is done when everybody knows all that.
    Story& then(std::size_t who, Deed deed)
    {
        _sequels.emplace_back(who, std::move(deed));
        return *this;
    }

    /// What everybody has in the end, in all orders of arrival.
    void endsAs(const std::string& end) const
    {
        std::vector<std::size_t> order(std::max<std::size_t>(1, _deeds.size()));
        std::iota(order.begin(), order.end(), std::size_t(0));
        do
        {
            EXPECT_EQ(play(order), end) << "in the order " << testing::PrintToString(order);
        } while (std::next_permutation(order.begin(), order.end()));
    }

    /// The same where the order counts: that of arrival at the server.
    void endsAs(const std::vector<std::size_t>& order, const std::string& end) const
    {
        EXPECT_EQ(play(order), end) << "in the order " << testing::PrintToString(order);
    }

private:
    std::string play(const std::vector<std::size_t>& order) const
    {
        SessionCase session(_notation, order.size());
        for (const Deed& deed : _preparations)
        {
            deed(session[0]);
            session.settle();
        }
        for (std::size_t who = 0; who < _deeds.size(); ++who)
        {
            _deeds[who](session[who]);
        }
        for (const std::size_t who : order)
        {
            session[who].send();
        }
        session.settle();
        for (const auto& [who, deed] : _sequels)
        {
            deed(session[who]);
            session.settle();
        }
        return showLooks(session.getServer().getDocument().getTextWithTombstones());
    }

    std::string _notation;
    std::vector<Deed> _preparations;
    std::vector<Deed> _deeds;
    std::vector<std::pair<std::size_t, Deed>> _sequels;
};

inline Deed types(unsigned long offset, std::string text)
{
    return [=](Participant& person) { person.replace(offset, offset, text); };
}

inline Deed deletes(unsigned long begin, unsigned long end)
{
    return [=](Participant& person) { person.replace(begin, end, ""); };
}

inline Deed paints(unsigned long begin, unsigned long end, LookChange change)
{
    return [=](Participant& person) { person.setRunLook(begin, end, change); };
}

inline Deed paintsParagraphs(unsigned long begin, unsigned long end, LookChange change)
{
    return [=](Participant& person) { person.setParagraphLook(begin, end, change); };
}

/// Deletes slots of the text, as they are for somebody who knows what was prepared alone.
inline Deed deletesSlots(unsigned long begin, unsigned long end)
{
    return [=](Participant& person)
    {
        Operations operations;
        operations.push_back(TestSupport::mark(begin, end));
        person.getClient().perform(operations, nullptr);
    };
}

/// Undoes the last own action.
inline Deed undoes()
{
    return [](Participant& person) { EXPECT_TRUE(person.getClient().undo()); };
}

inline Deed redoes()
{
    return [](Participant& person) { EXPECT_TRUE(person.getClient().redo()); };
}

} // namespace Zem::CollaborationSession
