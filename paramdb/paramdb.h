// Everything of paramdb but the selection controls.
#pragma once

#include <paramdb/distillery/param_distillery.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/service/param_server.h>
#include <paramdb/service/table_manager.h>
#include <paramdb/storage/lake.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>
