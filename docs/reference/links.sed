# The pages of docs/ link to files of the checkout. The reference has its own pages
# for headers and examples, and copies of the other files.
s#](\(\.\./\)*include/\([A-Za-z_]*\.h\))#](@ref \2)#g
# A source's page is named after it, with underscores doubled and the dot as _8.
/](\(\.\.\/\)*examples\// {
  :underscores
  s#\(](\(\.\./\)*examples/[A-Za-z]*\)_\([a-z]*\.[a-z]*)\)#\1@\3#
  t underscores
  s#](\(\.\./\)*examples/\([A-Za-z@]*\)\.\([a-z]*\))#](\2_8\3_source.html)#g
  s#@\([a-z]*_8[a-z]*_source\)#__\1#g
}
s#](\(\.\./\)*tests/\([a-z-]*\.txt\))#](\2)#g
# doxygen does not take a name without a dot for a link.
s#\[LICENSE\](LICENSE)#<a href="LICENSE">LICENSE</a>#g
