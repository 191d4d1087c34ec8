#include "CE_TableOperands.h"

#include <type_traits>

namespace Zem::CollaborationEngine
{

namespace
{

template<class Operation>
constexpr bool isRowOperation = std::is_same_v<std::decay_t<Operation>, TableRowOperation>;

template<class Tag>
std::unique_ptr<AtomicOperation> makeLike(const TableRowOrColumnOperation<Tag>& model,
                                          NestedTableOperation nestedOperation)
{
    auto operation = std::make_unique<TableRowOrColumnOperation<Tag>>(model.getNodeAddress(), model.getOperandType(),
                                                                      std::move(nestedOperation));
    operation->inheritIDIfPossibleImpl(model);
    return operation;
}

} // namespace

TableOperand makeTableOperand(const NodeOperand& operand)
{
    const NestedTableOperation* nestedOperation = nullptr;
    bool isRow = false;
    visitWith(castToFamily<TableOperation>(operand._operation),
              [&](const auto& operation)
              {
                  nestedOperation = &operation.getNestedOperation();
                  isRow = isRowOperation<decltype(operation)>;
              });
    return TableOperand{operand, *nestedOperation, isRow};
}

std::unique_ptr<AtomicOperation> makeTableOperation(const TableOperand& model, NestedTableOperation nestedOperation)
{
    std::unique_ptr<AtomicOperation> operation;
    visitWith(castToFamily<TableOperation>(model._operand._operation),
              [&](const auto& typedModel) { operation = makeLike(typedModel, std::move(nestedOperation)); });
    return operation;
}

} // namespace Zem::CollaborationEngine
