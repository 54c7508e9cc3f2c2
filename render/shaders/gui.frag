/// gui.frag
/// For drawing 2D GUI components, buttons etc.
varying vec3 vfColor;
void main(void)
{
    gl_FragColor = vec4(vfColor, 1.0);
}
