# Reads one GoogleTest XML report. Prints a line for every failed and skipped test, and at the end
# "passed failed skipped". `status` is what CTest says of the program, `where` names it.
function attribute(name,    text) {
    if (!match($0, " " name "=\"[^\"]*\"")) return ""
    text = substr($0, RSTART, RLENGTH)
    sub(/^[^"]*"/, "", text)
    sub(/"$/, "", text)
    gsub(/&#x0A;/, " ", text)
    gsub(/&lt;/, "<", text)
    gsub(/&gt;/, ">", text)
    gsub(/&quot;/, "\"", text)
    gsub(/&apos;/, "'", text)
    gsub(/&amp;/, "\\&", text)
    return text
}

function close_case() {
    if (test == "") return
    if (bad) {
        failed++
        print "FAILED: " where " " test
    } else if (idle) {
        skipped++
        print "Skipped: " where " " test ": " reason
    } else {
        passed++
    }
    test = ""
}

/<testcase / {
    close_case()
    test = attribute("classname") "." attribute("name")
    bad = 0
    idle = attribute("result") != "completed"
    reason = attribute("result") == "suppressed" ? "disabled" : "no reason given"
}
/<failure / { bad = 1 }
/<skipped / { if (attribute("message") != "") reason = attribute("message") }
/<\/testsuites>/ { whole = 1 }

END {
    close_case()
    if (!whole) {
        failed++
        print "FAILED: " where " left half a report"
    } else if (status != "run" && failed == 0) {
        failed++
        print "FAILED: " where " ended badly after its tests"
    }
    print passed + 0, failed + 0, skipped + 0
}
