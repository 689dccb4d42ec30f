// Everything of paramdb but the selection controls.
#pragma once

#include <paramdb/distillery/order_interpreter.h>
#include <paramdb/distillery/param_distillery.h>
#include <paramdb/keys/idx8_set.h>
#include <paramdb/keys/q_idx8.h>
#include <paramdb/platform/core/formatting.h>
#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/framework/cfile.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/platform/sea/resource_list.h>
#include <paramdb/platform/sea/sea_base.h>
#include <paramdb/platform/signal/clavis_set.h>
#include <paramdb/platform/signal/measuring_unit.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/query/spec_interval.h>
#include <paramdb/query/trigger_store.h>
#include <paramdb/service/param_server.h>
#include <paramdb/service/table_manager.h>
#include <paramdb/storage/dyn_tables.h>
#include <paramdb/storage/lake.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>
#include <paramdb/tables/calc_parameter.h>
#include <paramdb/tables/table_messages.h>
#include <paramdb/tables/table_type.h>
