/// gui.vert
/// For drawing 2D GUI components, buttons etc.
/// prmtx should contain a pixel-aligned ortho matrix: see the drawGUI function.
attribute vec2 a_position;
attribute vec3 a_colors;
varying vec3 vfColor;
uniform mat4 prmtx;
void main(void)
{
    vfColor = a_colors.xyz;
    gl_PointSize = 6.0;
    gl_Position = prmtx * vec4(a_position, 0.0, 1.0);
}
