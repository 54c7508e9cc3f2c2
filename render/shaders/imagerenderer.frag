// imagerenderer.frag
// Shader for simple rendering of images as textured quads.
precision mediump float;
varying vec2 v_texCoord;
uniform sampler2D s_texture;
void main()
{
    vec3 texCol = texture2D(s_texture, v_texCoord).xyz;
    gl_FragColor = vec4(texCol, 1.0);
}
