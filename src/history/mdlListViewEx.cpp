#include "history/mdlListViewEx.h"

#include "state/mdlTools.h"

namespace tarvik {

void SetSortHeader(ListView& List, bool Clickable) {
    guarded("SetSortHeader", [&] { List.setHeadersClickable(Clickable); });
}

void SetOptimalHeaderWidth(ListView& List, bool FitHeader) {
    guarded("SetOptimalHeaderWidth",
            [&] { List.fitColumns(FitHeader ? ColumnFit::Headers : ColumnFit::Contents); });
}

} // namespace tarvik
