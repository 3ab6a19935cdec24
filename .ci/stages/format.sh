#!/usr/bin/env bash
# Every C++ source in the repository, tests and fuzz targets included, must be exactly what
# clang-format-14 makes of it with the repository's .clang-format. Prints the files that
# differ and fails; `clang-format-14 -i FILE` fixes one.
set -euo pipefail
mapfile -t sources < <(git ls-files '*.h' '*.hpp' '*.cpp' '*.cc')
unformatted=()
for source in "${sources[@]}"; do
  clang-format-14 --dry-run --Werror "$source" >/dev/null 2>&1 || unformatted+=("$source")
done
if ((${#unformatted[@]})); then
  printf 'not formatted: %s\n' "${unformatted[@]}"
  exit 1
fi
echo "${#sources[@]} sources formatted"
