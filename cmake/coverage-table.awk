# Adds up what coverage.awk printed by folder, prints the table, and ends with 1 when the product's
# code is less covered than promised.
function share(part, whole) { return whole ? 100 * part / whole : 100 }

function row(name, sums,    i) {
    printf "%-28s %6d %7.1f %% %8d %7.1f %%\n", name, sums[1], share(sums[2], sums[1]), sums[3],
        share(sums[4], sums[3])
}

function add(name,    i) {
    for (i = 1; i <= 4; ++i) sum[name, i] += $(i + 1)
}

function show(name,    i, sums) {
    for (i = 1; i <= 4; ++i) sums[i] = sum[name, i]
    row(name, sums)
}

# A folder of the tools is a program: its parts are counted together.
{
    folder = $1
    sub(/\/[^\/]*$/, "", folder)
    if (folder ~ /^tools\//) sub(/^tools\/[^\/]*\/.*/, "tools/tarnexctl", folder)
    if (!(folder in seen)) order[++folders] = folder
    seen[folder] = 1
    add(folder)
    if ($1 ~ /^(src|include)\//) add("Product (src, include)")
    else add("Companion (tools)")
}

END {
    printf "%-28s %6s %9s %8s %9s\n", "FOLDER", "LINES", "RAN", "BRANCHES", "TAKEN"
    for (i = 1; i <= folders; ++i) show(order[i])
    show("Product (src, include)")
    show("Companion (tools)")
    product = "Product (src, include)"
    exit !sum[product, 1] || share(sum[product, 2], sum[product, 1]) < lines ||
        share(sum[product, 4], sum[product, 3]) < branches
}
