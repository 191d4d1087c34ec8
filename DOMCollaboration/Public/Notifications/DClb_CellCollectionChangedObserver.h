#pragma once

#include "DOM_NativeNodeAddress.h"
#include "DOM_RowColumnStyle.h"
#include "Util_Export.h"
#include "Util_TableIndices.h"

namespace Zem::DOM
{

template<class Style>
struct SparseData;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of changes of a table's rows and columns. Indices count live rows and columns.
class ZEM_EXPORT CellCollectionChangedObserver
{
public:
    virtual void onRowStyleChanged(const DOM::NativeNodeAddress& table, RowIndex row, unsigned long propertyId) = 0;

    /// `removed` is what the table gave: its cells by live column.
    virtual void onRowRemoved(const DOM::NativeNodeAddress& table, RowIndex row,
                              const DOM::SparseData<DOM::RowStyle>& removed) = 0;

    virtual void onRowInserted(const DOM::NativeNodeAddress& table, RowIndex row) = 0;

    virtual void onColumnStyleChanged(const DOM::NativeNodeAddress& table, ColumnIndex column,
                                      unsigned long propertyId) = 0;

    /// `removed` is what the table gave: its cells by live row.
    virtual void onColumnRemoved(const DOM::NativeNodeAddress& table, ColumnIndex column,
                                 const DOM::SparseData<DOM::ColumnStyle>& removed) = 0;

    virtual void onColumnInserted(const DOM::NativeNodeAddress& table, ColumnIndex column) = 0;

protected:
    ~CellCollectionChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
