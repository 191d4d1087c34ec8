#include "DOM_FieldBlock.h"
#include "DOM_ValueTypeTest.h"

#include "Util_Cast.h"

namespace Zem::DOM::Tests
{

using FormulaTypes = ::testing::Types<FormulaSyntaxTree::ColumnEdge, FormulaSyntaxTree::RowEdge,
                                      FormulaSyntaxTree::CellRange, Formula, ArrayFormulaShift, BlockValue<FloatNumber>,
                                      BlockValue<FormulaErrorType>, BlockValue<bool>, TableOfContentsInfo, FieldBlock>;
INSTANTIATE_TYPED_TEST_SUITE_P(Formulas, ValueType, FormulaTypes);

TEST(FieldBlock, KeepsTheAlternativeOfItsInfo)
{
    const std::vector<FieldBlock::FieldInfo> infos{Formula("A1+1"),
                                                   ArrayFormulaShift(1, 2),
                                                   BlockValue<FloatNumber>(FloatNumber(0.1)),
                                                   BlockValue<FormulaErrorType>(FormulaErrorType::UnknownName),
                                                   BlockValue<bool>(true),
                                                   TableOfContentsInfo()};
    for (const FieldBlock::FieldInfo& info : infos)
    {
        const FieldBlock read = fromJson<FieldBlock>(Zem::toJson(FieldBlock(info)));
        EXPECT_EQ(info.which(), read.getFieldInfo().which());
        EXPECT_TRUE(areDeeplyEqual(info, read.getFieldInfo())) << info.which();
    }
}

TEST(FieldBlock, IsUnequalToOneWithAnotherAlternative)
{
    EXPECT_FALSE(FieldBlock(BlockValue<bool>()) == FieldBlock(BlockValue<FloatNumber>()));
}

TEST(FieldBlock, IsClonedThroughItsBase)
{
    const FieldBlock block{FieldBlock::FieldInfo(Formula("SUM(A1:B2)"))};
    const std::unique_ptr<Block> clone = cloneToUnique<Block>(block);
    EXPECT_TRUE(*clone == block);
    EXPECT_EQ(BlockKind::FieldBlock, clone->getKind());
}

TEST(Formula, HasColumnsBeforeRowsInItsArraySize)
{
    Formula formula;
    EXPECT_FALSE(formula.getArrayFormulaSize());
    formula.setArrayFormulaSize(Size2D<unsigned long>{3, 2});
    EXPECT_EQ(3u, formula.getArrayFormulaSize()->_width);
}

TEST(CellRange, IsClonedThroughItsBase)
{
    using namespace FormulaSyntaxTree;
    const CellRange range(TableAddress(std::string("Sheet1")), {{ColumnIndex(1), true}, {ColumnIndex(2), false}},
                          {{RowID(7), false}, {RowID(9), false}});
    const std::unique_ptr<Expr> clone = cloneToUnique<Expr>(range);
    EXPECT_TRUE(range == cast<CellRange>(*clone));
    EXPECT_TRUE(range.getFirstTableAddress() == range.getSecondTableAddress());
}

} // namespace Zem::DOM::Tests
