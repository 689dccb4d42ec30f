// The selection controls: how an operator picks keys. They link paramdb::controls.
#pragma once

#include <paramdb/controls/clavis_combo_box.h>
#include <paramdb/controls/clavis_list_ctrl.h>
#include <paramdb/controls/pentad_ctrl.h>
#include <paramdb/controls/pentad_dialog.h>
#include <paramdb/controls/pentad_range_select_ctrl.h>
#include <paramdb/controls/range_select_ctrl.h>
