// Everything libtovak.so exports, in one include.
#ifndef TOVAK_TOVAK_H
#define TOVAK_TOVAK_H

#include "tovak/acquire_command.h"
#include "tovak/command_base.h"
#include "tovak/compare_update_command.h"
#include "tovak/entry.h"
#include "tovak/parameters.h"
#include "tovak/process_path.h"
#include "tovak/quenmark_command.h"
#include "tovak/test.h"

#endif  // TOVAK_TOVAK_H
