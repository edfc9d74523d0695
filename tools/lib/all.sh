# The whole library in its order. Sourced by bash.
TOOLS_LIB=$(dirname "${BASH_SOURCE[0]}")
. "$TOOLS_LIB/common.sh"
. "$TOOLS_LIB/packages.sh"
. "$TOOLS_LIB/build.sh"
. "$TOOLS_LIB/wine-root.sh"
. "$TOOLS_LIB/wine-own.sh"
. "$TOOLS_LIB/wine.sh"
