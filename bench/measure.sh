# Sourced by the peer comparisons. measure LABEL COMMAND... prints the best and mean wall time
# of the command over $runs runs, after one warm-up run (through hyperfine when it is there).
measure() {
  local label=$1
  shift
  "$@" >/dev/null 2>&1 || { echo "failed: $*" >&2; exit 1; }
  if command -v hyperfine >/dev/null; then
    hyperfine --warmup 1 --runs "$runs" --style basic --command-name "$label" -- "$(printf '%q ' "$@")"
    return
  fi
  local best=0 total=0 start elapsed
  for ((i = 0; i < runs; i++)); do
    start=$(date +%s%N)
    "$@" >/dev/null 2>&1
    elapsed=$((($(date +%s%N) - start) / 1000))
    total=$((total + elapsed))
    ((best == 0 || elapsed < best)) && best=$elapsed
  done
  awk -v l="$label" -v b="$best" -v t="$total" -v n="$runs" \
    'BEGIN { printf "%-36s best %7.1f ms   mean %7.1f ms\n", l, b / 1000, t / n / 1000 }'
}

# One timed run of a command, in milliseconds; the script stops when the command fails.
time_ms() {
  local start end
  start=$(date +%s%N)
  "$@" >/dev/null 2>&1 || { echo "failed: $*" >&2; exit 1; }
  end=$(date +%s%N)
  echo $(((end - start) / 1000000))
}

# The median of the numbers given as arguments.
median() { printf '%s\n' "$@" | sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
