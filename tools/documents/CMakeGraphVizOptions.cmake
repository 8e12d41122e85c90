# How CMake draws the links between the subsystems and Qt's modules.
set(GRAPHVIZ_GRAPH_NAME "Subsystems of Velmora")
set(GRAPHVIZ_GRAPH_HEADER "node [shape=box, style=\"filled,rounded\", color=\"#5b7fa3\", \
fillcolor=\"#c5dcf0\", fontcolor=\"#0d2b45\", fontname=\"DejaVu Sans, Verdana, sans-serif\"]; \
edge [color=\"#5b7fa3\"];")
# The build's options, and what Qt itself links.
set(GRAPHVIZ_IGNORE_TARGETS
    "_options$" "^Qt6::(Gui|Platform|moc|rcc|uic)$" "^(Qt|Wrap.*|OpenGL|Threads)::")
