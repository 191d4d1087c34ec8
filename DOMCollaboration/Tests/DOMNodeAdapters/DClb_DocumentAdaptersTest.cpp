#include "DOMNodeAdapters/DClb_BlocksAdapter.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "DOMNodeAdapters/DClb_SampleDocument.h"

#include "DOM_DefaultCellProps.h"

#include <gtest/gtest.h>

#include <string>

namespace Zem::DOMCollaboration
{

using namespace Addresses;

namespace
{

class DocumentAdaptersTest : public testing::Test
{
protected:
    BlocksAdapterWithNodeAdapter makeDetached()
    {
        return BlocksAdapterWithNodeAdapter(_document.getTextWithTombstones(), _styles, &_theme, &_colorMap, _paraProps,
                                            _runProps, _factory);
    }

    SampleDocument _sample;
    DOM::Document& _document = _sample._document;
    DOM::Styles _styles;
    DOM::Theme _theme;
    DOM::ColorMap _colorMap;
    DOM::SharedObjectFactory _factory;
    DOM::ParaPropsConstPtr _paraProps = std::make_shared<const DOM::ParaProps>();
    DOM::RunPropsConstPtr _runProps = std::make_shared<const DOM::RunProps>();
};

void expectRoots(DocumentAdapterWithNodeAdapter& document, unsigned long operationType, Native nativeType)
{
    EXPECT_EQ(operationType, document.createOperationNodeAdapter()->getNodeType());
    EXPECT_EQ(operationType, std::as_const(document).createOperationNodeAdapter()->getNodeType());
    EXPECT_EQ(nativeType, document.createNodeAdapter()->getNodeType());
    EXPECT_EQ(nativeType, std::as_const(document).createNodeAdapter()->getNodeType());
}

template<class Document>
std::string visitedName(Document& document)
{
    return visitWith<std::string>(
        document, [](const PresentationDocumentAdapter&) { return "presentation"; },
        [](const TextDocumentAdapter&) { return "text"; }, [](const WorkbookDocumentAdapter&) { return "workbook"; },
        [](const BlocksAdapterWithNodeAdapter&) { return "blocks"; });
}

} // namespace

TEST_F(DocumentAdaptersTest, RootsAreThoseOfTheKindOfDocumentInBothWorlds)
{
    TextDocumentAdapter text(_document);
    WorkbookDocumentAdapter workbook(_document);
    PresentationDocumentAdapter presentation(_document);
    BlocksAdapterWithNodeAdapter detached = makeDetached();
    expectRoots(text, 0, Native::TextDocument);
    expectRoots(workbook, 1, Native::WorkbookDocument);
    expectRoots(presentation, 2, Native::PresentationDocument);
    expectRoots(detached, 23, Native::Temporary);
}

TEST_F(DocumentAdaptersTest, AVisitorIsCalledForTheKindOfDocument)
{
    TextDocumentAdapter text(_document);
    const WorkbookDocumentAdapter workbook(_document);
    PresentationDocumentAdapter presentation(_document);
    const BlocksAdapterWithNodeAdapter detached = makeDetached();
    EXPECT_EQ("text", visitedName<DocumentAdapterWithNodeAdapter>(text));
    EXPECT_EQ("workbook", visitedName<const DOMAdapter>(workbook));
    EXPECT_EQ("presentation", visitedName<DOMAdapter>(presentation));
    EXPECT_EQ("blocks", visitedName<const DocumentAdapterWithNodeAdapter>(detached));
}

TEST_F(DocumentAdaptersTest, DefaultCellPropertiesDifferByKind)
{
    EXPECT_EQ(DOM::getWordDefaultCellProps(), TextDocumentAdapter(_document).getDefaultCellProps());
    EXPECT_EQ(DOM::getWorksheetDefaultCellProps(), WorkbookDocumentAdapter(_document).getDefaultCellProps());
    EXPECT_EQ(DOM::getDefaultCellProps(), PresentationDocumentAdapter(_document).getDefaultCellProps());
    EXPECT_EQ(DOM::getDefaultCellProps(), makeDetached().getDefaultCellProps());
}

TEST_F(DocumentAdaptersTest, ADocumentHasNoLocalDefaults)
{
    const TextDocumentAdapter text(_document);
    EXPECT_EQ(nullptr, text.getLocalDefaultParaProps());
    EXPECT_EQ(nullptr, text.getLocalDefaultRunProps());
}

TEST_F(DocumentAdaptersTest, ADetachedTextHasTheLocalDefaultsThatItIsGiven)
{
    const BlocksAdapterWithNodeAdapter detached = makeDetached();
    EXPECT_EQ(_paraProps, detached.getLocalDefaultParaProps());
    EXPECT_EQ(_runProps, detached.getLocalDefaultRunProps());
    _paraProps = nullptr;
    _runProps = nullptr;
    const BlocksAdapterWithNodeAdapter without = makeDetached();
    EXPECT_EQ(nullptr, without.getLocalDefaultParaProps());
    EXPECT_EQ(nullptr, without.getLocalDefaultRunProps());
}

TEST_F(DocumentAdaptersTest, ADocumentAnswersWithItsOwnSettings)
{
    WorkbookDocumentAdapter workbook(_document);
    EXPECT_EQ(&_document, &workbook.getDocument());
    EXPECT_EQ(&_document, &std::as_const(workbook).getDocument());
    EXPECT_EQ(&_document.getNumLists(), &workbook.getNumLists());
    EXPECT_EQ(&_document.getSharedObjectFactory(), &workbook.getSharedObjectFactory());
    EXPECT_EQ(&_document.getStyles(), &workbook.getStyles());
    EXPECT_EQ(&_document.getTheme(), workbook.getTheme());
    EXPECT_EQ(&_document.getColorMap(), workbook.getColorMap());
    EXPECT_FALSE(workbook.isChangesTrackingEnabled());
    _document.setChangesTrackingEnabled(true);
    EXPECT_TRUE(workbook.isChangesTrackingEnabled());
}

TEST_F(DocumentAdaptersTest, ADetachedTextAnswersWithWhatItIsGiven)
{
    BlocksAdapterWithNodeAdapter detached = makeDetached();
    EXPECT_EQ(&_document.getTextWithTombstones(), &detached.getTextWithTombstones());
    EXPECT_EQ(&_document.getTextWithTombstones(), &std::as_const(detached).getTextWithTombstones());
    EXPECT_EQ(_document.getTextWithTombstones().getBlocks().size(), detached.getBlocks().size());
    EXPECT_EQ(_document.getTextWithTombstones().getBlocks().front().get(), &detached.getBlocks()[0]);
    EXPECT_TRUE(detached.getNumLists().empty());
    EXPECT_EQ(&_factory, &detached.getSharedObjectFactory());
    EXPECT_EQ(&_styles, &detached.getStyles());
    EXPECT_EQ(&_theme, detached.getTheme());
    EXPECT_EQ(&_colorMap, detached.getColorMap());
    EXPECT_FALSE(detached.isChangesTrackingEnabled());
    detached.setChangesTrackingEnabled(true);
    EXPECT_TRUE(detached.isChangesTrackingEnabled());
}

} // namespace Zem::DOMCollaboration
