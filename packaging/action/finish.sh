#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# Ends the job as the command ended, now that its report is kept.
set -euo pipefail

case ${LOADSCOPE_EXIT_CODE-} in
0) exit 0 ;;
3) printf '::error::A budget is exceeded; the job summary says which.\n' ;;
*) printf '::error::Loadscope could not tell; the log says why.\n' ;;
esac
[[ ${LOADSCOPE_EXIT_CODE-} =~ ^[0-9]{1,3}$ ]] || exit 1
exit "$LOADSCOPE_EXIT_CODE"
