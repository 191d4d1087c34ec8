#pragma once

/// What people meant. A text is a list of characters, each live or dead, with its fields and its paragraph's; the
/// actions of people are played on it in the server's order, by the ids of characters. It knows no slots, no tags and
/// no transformation: what the document must be is what is written here.
///
/// Where things stand is known as far as people said it: what is typed stands behind one character and in front of
/// another. Of two things for one place the earlier stands in front; where neither of both is known (somebody typed
/// beside what somebody else brought back), every order is right, and the one that the document has is kept from then
/// on. In the same way a field has one right value, or several.

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZemFarm
{

/// Names of fields with their values. One that is missing has the value "".
using Fields = std::map<std::string, std::string>;

/// A character as a document has it. A paragraph's end is a "\n", and has the fields of the paragraph that it begins.
struct ShownCharacter
{
    std::string _value;
    Fields _fields;
};

/// The last paragraph has no end.
struct ShownText
{
    Fields _firstParagraph;
    std::vector<ShownCharacter> _characters;
};

/// In one line, `/` for a paragraph's end.
std::string print(const ShownText& text);

/// A document that people didn't mean.
class Misjudged : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

class Judge
{
public:
    /// An id. No two characters but paragraphs' ends have one value.
    using Character = std::size_t;
    /// What somebody did, by the order in which things were described.
    using Deed = std::size_t;
    /// Which deeds somebody knows: a flag for each.
    using View = std::vector<bool>;

    static constexpr Character textBegin = 0;
    static constexpr Character textEnd = 1;
    static constexpr Deed noDeed = ~Deed(0);

    /// Characters that were there before. The text begins a paragraph; `textBegin` has its fields.
    explicit Judge(const ShownText& start);

    /// The characters of [`begin`, `end`) give way to others. `text` is what the author sees.
    struct Replacement
    {
        std::size_t _begin = 0;
        std::size_t _end = 0;
        std::vector<std::string> _inserted;
    };

    /// Fields of all characters of [`begin`, `end`), or of the paragraphs that have one of them, or in which it lies.
    struct Setting
    {
        std::size_t _begin = 0;
        std::size_t _end = 0;
        bool _isOfParagraphs = false;
        Fields _fields;
    };

    /// What somebody does who knows `view`, and sees `text`. Fails: `Misjudged` if nobody with this view can see that.
    Deed replace(const ShownText& text, View view, const Replacement& replacement);
    Deed set(const ShownText& text, View view, const Setting& setting);
    Deed undo(View view, Deed undone);

    /// It comes to the server.
    void play(Deed deed);

    /// The text that somebody sees who knows `view`: each character once, in an order that is right.
    /// Fails: `Misjudged`.
    void compareText(const ShownText& text, const View& view) const;

    /// What everybody sees when all that was done has come to the server. Fails: `Misjudged`.
    void compare(const ShownText& text);

    /// Whether the undo of deeds would show in the text that somebody sees who knows `view`.
    bool showsUndo(const View& view, const std::vector<Deed>& undone);

    /// Whether a deed stands, for somebody who knows `view`: not undone, or done again.
    bool isInForce(Deed deed, const View& view) const;

private:
    /// A value that a field was given. The last one that is in force stands.
    struct Value
    {
        Deed _setting = noDeed;
        /// The place of the setting in the server's order; 0 for what was there before.
        std::size_t _place = 0;
        std::string _value;
        /// Whether the character surely has it as long as the setting stands.
        bool _isSure = true;
        enum class State : unsigned char
        {
            On,
            Off,
            Either
        } _state = State::On;
    };

    using Values = std::vector<Value>;

    struct CharacterState
    {
        std::string _value;
        Deed _insertion = noDeed;
        /// Who stands directly behind it, and directly in front of it, as far as anybody said.
        std::vector<Character> _followers;
        std::vector<Character> _precursors;
        std::vector<Deed> _deletions;
        /// Of a paragraph's end: the deletions for which the paragraph behind it no longer looks as it did, but like
        /// the one that it joins.
        std::vector<Deed> _lookDeletions;
        /// What it was typed to look like.
        Character _model = textEnd;
        std::map<std::string, Values> _fields;
    };

    struct DeedState
    {
        View _view;
        std::vector<Character> _inserted;
        Character _left = textBegin;
        Character _right = textEnd;
        bool _deletes = false;
        /// Of a setting.
        Fields _fields;
        bool _isOfParagraphs = false;
        std::vector<Character> _set;
        Character _first = textBegin;
        Character _end = textEnd;
        Deed _undone = noDeed;
        std::vector<Deed> _undos;
        /// From 1 on, when it has come to the server.
        std::size_t _place = 0;
    };

    enum class Answer : unsigned char
    {
        Yes,
        No,
        Maybe
    };

    /// A paragraph of the server's text: its characters that live, and those ends in it that don't, any more. The first
    /// of all is the end in front.
    struct Paragraph
    {
        std::vector<Character> _begins;
        std::vector<Character> _characters;
    };

    Character addCharacter(std::string value, Deed insertion, Character left, Character right);
    void order(Character first, Character second);
    void sort();
    std::vector<bool> findAll(Character from, std::vector<Character> CharacterState::*way) const;
    bool isBreak(Character character) const;
    bool knows(const View& view, Deed deed) const;
    bool isKnown(const View& view, Character character) const;
    bool isLive(Character character, const View& view) const;
    std::vector<bool> findLive(const View& view) const;
    bool looksOn(Character paragraphEnd) const;
    void keepOrder(const std::vector<Character>& characters);
    std::vector<Character> identify(const ShownText& text, const View& view) const;
    std::string printLive(const View& view) const;
    DeedState& addDeed(View view);
    void describeDeletion(const std::vector<Character>& seen, const Replacement& replacement, DeedState& deed);
    Character findModel(const std::vector<Character>& seen, const Replacement& replacement) const;

    void placeInserted(const DeedState& deed);
    void giveLook(Character character, const DeedState& deed);
    void giveLookOfModel(Character character);
    std::map<std::string, Values> findParagraphLook(Character character) const;
    void giveParagraphLook(Character character, const DeedState& deed);
    void giveLinks(Character character, const DeedState& deed);
    void addConcurrentSettings(Character character, const DeedState& deed);
    Answer covers(const DeedState& setting, Character character, const std::vector<bool>& behindFirst,
                  const std::vector<bool>& inFrontOfFirst, const std::vector<bool>& inFrontOfEnd,
                  const std::vector<bool>& behindEnd) const;
    std::vector<Answer> findCovered(Deed setting) const;
    void apply(Deed setting);
    void applyToParagraphs(Deed setting);
    void addValues(Character character, Deed setting, bool isSure);
    void updateValues(Deed setting);
    std::vector<Paragraph> findParagraphs() const;
    std::vector<Character> findLooks(const Paragraph& paragraph) const;
    std::vector<std::string> findAllowed(Character character, const std::string& field) const;
    void compareLooks(const ShownText& text, const std::vector<Character>& characters);
    void compareTogether(const std::vector<Character>& characters) const;
    void compareFields(const std::string& what, const std::vector<Character>& looks, const Fields& shown);
    void keep(Character character, const std::string& field, const std::string& value);

    std::vector<CharacterState> _characters;
    std::vector<DeedState> _deeds;
    std::map<std::string, Character> _byValue;
    /// All characters, live or dead, in an order that agrees with all that is known.
    std::vector<Character> _order;
    std::vector<Deed> _played;
    View _serverView;
};

} // namespace ZemFarm
