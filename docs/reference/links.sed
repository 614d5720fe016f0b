# The papers link to files of the checkout; the reference has pages of its own
# for headers and examples, and copies of the rest beside its pages.
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
# A name without a dot is no link for doxygen.
s#\[LICENSE\](LICENSE)#<a href="LICENSE">LICENSE</a>#g
