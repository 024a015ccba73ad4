# Reads `llvm-cov export -summary-only` and prints a line for each file of the project: its path
# below `root`, its lines and those that ran, its branches and those that were taken.
function summary(name, part,    text) {
    if (!match($0, "\"" name "\":\\{[^}]*\\}")) return 0
    text = substr($0, RSTART, RLENGTH)
    sub(".*\"" part "\":", "", text)
    return text + 0
}

BEGIN { RS = "\"filename\":\"" }

NR > 1 {
    path = $0
    sub(/".*/, "", path)
    # Compilers that share a cache name files from the build folder on.
    while (match(path, /[^\/]+\/\.\.\//)) sub(/[^\/]+\/\.\.\//, "", path)
    if (index(path, root "/") != 1) next
    print substr(path, length(root) + 2), summary("lines", "count"), summary("lines", "covered"),
        summary("branches", "count"), summary("branches", "covered")
}
