#!/bin/sh
# Writes the changelog ($2) that a package of this version ($1) has to have.
set -eu
gzip -9n >"$2" <<END
telvo ($1) stable; urgency=medium

  * This version; the project's history has what changed.

 -- Telvo engineering <engineering@telvo.example>  Sun, 22 Nov 2026 12:00:00 +0000
END
