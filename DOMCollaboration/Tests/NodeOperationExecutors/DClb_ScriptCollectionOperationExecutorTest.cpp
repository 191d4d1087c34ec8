#include "DClb_ExecutorFixture.h"

#include "CE_MapOperation.h"

namespace Zem::DOMCollaboration
{

using CollaborationEngine::DataValue;
using CollaborationEngine::MapInsertOrRemoveOperation;
using CollaborationEngine::MapInsertTag;
using CollaborationEngine::MapLeaveRemovedOperation;
using CollaborationEngine::MapRemoveTag;

namespace
{

class ScriptCollectionOperationExecutorTest : public ExecutorFixture
{
protected:
    ScriptCollectionOperationExecutorTest()
    {
        _document.getScripts().insertScript("there", "text");
    }

    static SharedConstPtr<NodeAddressing::MapKey> makeKey(const std::string& name)
    {
        return std::make_shared<NodeAddressing::SimpleValueMapKey<std::string>>(name);
    }

    static SharedConstPtr<DataValue> makeText(const char* text)
    {
        return makeValue(std::string(text));
    }

    template<class Operation>
    static Operation make(SharedConstPtr<NodeAddressing::MapKey> key, SharedConstPtr<DataValue> data)
    {
        return Operation(makeFixedAddress(OperationDOMNodeType::ScriptCollection),
                         convertOperationNodeType(OperationDOMNodeType::ScriptCollection), std::move(key),
                         std::move(data));
    }

    template<class Operation>
    void expectExecutionFails(Operation operation, const char* message)
    {
        const DOM::Document before(_document);
        OperationUPtr changedOp;
        EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(operation, changedOp), message);
        EXPECT_TRUE(before == _document);
    }
};

using Insertion = MapInsertOrRemoveOperation<MapInsertTag>;
using Removal = MapInsertOrRemoveOperation<MapRemoveTag>;

} // namespace

TEST_F(ScriptCollectionOperationExecutorTest, InsertsAScript)
{
    auto operation = make<Insertion>(makeKey("new"), makeText("print(1)"));
    expectLaws(operation, {"onScriptInserted(\"new\")"}, {"onScriptRemoved(\"new\")"});
    EXPECT_EQ("print(1)", _document.getScripts().getScript("new").value());
}

TEST_F(ScriptCollectionOperationExecutorTest, RemovesAScriptAndKeepsItsTextInTheOperation)
{
    auto operation = make<Removal>(makeKey("there"), nullptr);
    expectLaws(operation, {"onScriptRemoved(\"there\")"}, {"onScriptInserted(\"there\")"});
    EXPECT_FALSE(_document.getScripts().getScript("there"));
    EXPECT_EQ("text", CollaborationEngine::getSimpleDataValue<std::string>(*operation.getData()));
}

TEST_F(ScriptCollectionOperationExecutorTest, ARemovalCarriesTheRemovedTextWhateverItCarriedBefore)
{
    auto operation = make<Removal>(makeKey("there"), makeText("something else"));
    execute(operation);
    EXPECT_EQ("text", CollaborationEngine::getSimpleDataValue<std::string>(*operation.getData()));
}

TEST_F(ScriptCollectionOperationExecutorTest, AReversedInsertionCarriesTheTextThatWasThere)
{
    auto operation = make<Insertion>(makeKey("new"), makeText("a"));
    execute(operation);
    _document.getScripts().removeScript("new");
    _document.getScripts().insertScript("new", "b");
    _executor.reverse(operation);
    EXPECT_EQ("b", CollaborationEngine::getSimpleDataValue<std::string>(*operation.getData()));
}

TEST_F(ScriptCollectionOperationExecutorTest, AnInsertionIsNoUpdate)
{
    expectExecutionFails(make<Insertion>(makeKey("there"), makeText("text")),
                         "!scripts.getScript(key.getValue()).is_initialized()");
    EXPECT_EQ(Lines(), _observer->takeLines());
}

TEST_F(ScriptCollectionOperationExecutorTest, ATextIsReplacedByRemovalAndInsertion)
{
    auto removal = make<Removal>(makeKey("there"), nullptr);
    auto insertion = make<Insertion>(makeKey("there"), makeText("changed"));
    execute(removal);
    execute(insertion);
    EXPECT_EQ((Lines{"onScriptRemoved(\"there\")", "onScriptInserted(\"there\")"}), _observer->takeLines());
    EXPECT_EQ("changed", _document.getScripts().getScript("there").value());
}

TEST_F(ScriptCollectionOperationExecutorTest, RemovingAnUnknownScriptFails)
{
    expectExecutionFails(make<Removal>(makeKey("absent"), nullptr), "script.is_initialized()");
    auto insertion = make<Insertion>(makeKey("absent"), makeText("text"));
    EXPECT_ASSERTION(_executor.reverse(insertion), "script.is_initialized()");
}

TEST_F(ScriptCollectionOperationExecutorTest, LeavingRemovedChangesNothing)
{
    const DOM::Document before(_document);
    auto operation = make<MapLeaveRemovedOperation>(makeKey("there"), nullptr);
    execute(operation);
    _executor.reverse(operation);
    EXPECT_TRUE(before == _document);
    EXPECT_FALSE(operation.getData());
    EXPECT_EQ(Lines(), _observer->takeLines());
}

TEST_F(ScriptCollectionOperationExecutorTest, MissingOrForeignPartsFail)
{
    expectExecutionFails(make<Insertion>(nullptr, makeText("text")), "plainPtr");
    expectExecutionFails(make<Removal>(nullptr, nullptr), "plainPtr");
    expectExecutionFails(make<Insertion>(makeKey("new"), nullptr), "plainPtr");
    expectExecutionFails(make<Insertion>(makeKey("new"), makeValue(1)), "plainPtr");

    auto ofUUID = make<Insertion>(std::make_shared<NodeAddressing::SimpleValueMapKey<UUID>>(), makeText("text"));
    OperationUPtr changedOp;
    EXPECT_THROW(_executor.executeAndChangeIfNeeded(ofUUID, changedOp), std::bad_cast);
}

TEST_F(ScriptCollectionOperationExecutorTest, AnotherKindOfOperationIsABadCast)
{
    auto operation = makeSetProperty<PropertyId::TableNameId>(makeFixedAddress(OperationDOMNodeType::ScriptCollection),
                                                              OperationDOMNodeType::ScriptCollection, "a", "b");
    OperationUPtr changedOp;
    EXPECT_THROW(_executor.executeAndChangeIfNeeded(operation, changedOp), std::bad_cast);
    EXPECT_THROW(_executor.reverse(operation), std::bad_cast);
}

TEST_F(ScriptCollectionOperationExecutorTest, NeedsALiveObserver)
{
    _observer.reset();
    auto insertion = make<Insertion>(makeKey("new"), makeText("text"));
    auto removal = make<Removal>(makeKey("there"), nullptr);
    OperationUPtr changedOp;
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(insertion, changedOp), "plainPtr");
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(removal, changedOp), "plainPtr");
}

} // namespace Zem::DOMCollaboration
