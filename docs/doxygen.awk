# Shows Doxygen the comments of a header. In these headers
# - a comment stands for all declarations below it, up to the next comment or empty line;
# - a comment behind a declaration is that declaration's own;
# - a class tells how its objects are made, copied and destroyed, so that these operations say nothing more;
# - a data member whose name says it all has no comment, nor have the operations that only answer or replace it; a
#   comment on such an operation stands for the one member.
# Every line stays where it is, so that what Doxygen complains about is found.

function reset() { text = ""; isOpen = 0; member = ""; hasShown = 0 }

# The declaration with a comment of its own before it.
function with(comment) { sub(/^ */, "&/** " comment " */ ") }

# What a special member of the class does; "" for any other declaration.
function special() {
    if ($0 ~ "~" class "\\(") return "Destroys the object with what it owns."
    if ($0 ~ "= delete;") return "The class cannot be copied."
    if ($0 ~ class "\\(\\)") return "An object in its initial state."
    if ($0 ~ class "\\(const " class "&") return "A copy, as the class describes copies."
    if ($0 ~ class "\\(" class "&&") return "Takes the contents of the other object over."
    if ($0 ~ "operator=\\(const " class "&") return "Becomes a copy, as the class describes copies."
    if ($0 ~ "operator=\\(" class "&&") return "Takes the contents of the other object over."
    if ($0 ~ "\\* clone\\(\\) const") return "A copy of the same class; the caller owns it."
    if ($0 ~ "GetThisClass\\(\\)") return "The run-time class of this type."
    if ($0 ~ "GetRuntimeClass\\(\\)") return "The run-time class of the object, whatever it is seen as."
    return ""
}

# "m_sPartName" as "part name".
function words(name) {
    sub(/^m_(arr|pt|[a-z])?/, "", name)
    gsub(/[A-Z]/, " &", name)
    return "Its" tolower(name) "."
}

# Specialisations and instantiations declare nothing new.
/^template <>$/ { reset(); isSpecial = 1 }
isSpecial { if ($0 ~ /^};$/) isSpecial = 0; print ""; next }
/^extern template / { reset(); print ""; next }

/^#/ || /^$/ { reset(); print; next }

/^     +\/\// { print; next } # inside a body

/^ *\/\// {
    if (isOpen) reset()
    comment = $0
    sub(/^ *\/\/ ?/, "", comment)
    text = text == "" ? comment : text " " comment
    sub(/\/\//, "///")
    print
    next
}

/^(class|struct) .*[^;]$/ {
    class = $0
    sub(/ final/, "", class)
    sub(/^(class|struct) (JOBX_API )?/, "", class)
    sub(/[ :].*/, "", class)
    reset()
}

/^(public|protected|private):/ || /^[{}]/ { reset(); print; next }

# The data member that the line declares, or that an operation in it only answers or replaces; "" for anything else.
function memberOf() {
    if ($0 ~ /^    [A-Za-z_].* [&*]*m_[A-Za-z]+( = .*|\{.*\})?;/ || $0 ~ /\{ return [&*]?m_[A-Za-z]+; \}$/ ||
        $0 ~ /\{ m_[A-Za-z]+ = [A-Za-z]+; \}$/) {
        match($0, /m_[A-Za-z]+/)
        return substr($0, RSTART, RLENGTH)
    }
    return ""
}

# A declaration begins; lines that go on are deeper.
/^(    )?[A-Za-z_~[].*[;{},()]/ && !/^ *(class|struct|enum|using|template|requires|friend class|friend struct) / {
    own = memberOf()
    if (!isOpen) {
        isOpen = 1
        member = own
    } else if (own != member) {
        member = "other"
    }
    isFirst = text != "" && !hasShown
    if ($0 ~ / \/\/ /) sub(/ \/\/ /, " ///< ")
    else if (isFirst) hasShown = 1
    else if (special() != "") with(special())
    else if ($0 ~ / override;/) ; # says what the base says
    else if (own != "" && (text == "" || member != own)) with(words(own))
    else if (text != "") with(text)
    print
    next
}

{ sub(/ \/\/ /, " ///< "); print }
